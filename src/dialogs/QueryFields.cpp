#include "dialogs/QueryFields.h"

#include <algorithm>
#include <limits>

#include "engine/ReportRun.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::dialogs {

namespace {

constexpr int mostCharacters = 32767;  // that a box can be limited to

/// The number that a node's key stands for; 0 for none, and for one that no row can have.
double NumberOf(std::string_view nodeKey) {
    try {
        const double number = Val(MidCharacters(nodeKey, 2));
        return number > std::numeric_limits<std::int16_t>::max() ? 0 : number;
    } catch (const RunTimeError&) {
        return 0;  // the name of a table may begin like a number beyond every range
    }
}

/// The number of a column that may have any type in a catalog made by hand.
std::int32_t WholeNumber(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    return CLng(std::clamp<double>(Val(text), Limits::min(), Limits::max()));
}

/// Rows that were written by hand may have no length. A box that takes no letter would leave its user without a way to
/// ask for the field.
int ValueLength(int defaultLength) {
    return defaultLength > 0 ? std::min(defaultLength, mostCharacters) : longestQueryValue;
}

}  // namespace

std::vector<QueryTable> ReadQueryFields(Database& database) {
    const auto records = database.OpenRecordset("SELECT ID, Text, Table FROM [Report - Index] ORDER BY Table, Text",
                                                RecordsetType::Snapshot);
    const int id = records->FindField("ID");
    const int text = records->FindField("Text");
    const int table = records->FindField("Table");
    std::vector<QueryTable> tables;
    for (; !records->IsEOF(); records->MoveNext()) {
        std::string name = records->Text(table);
        // Rows are sorted case-blind, so "Orders" and "ORDERS", which are one table, would alternate.
        if (tables.empty() || !EqualCaseBlind(tables.back().name, name)) tables.push_back({std::move(name), {}});
        tables.back().rows.push_back({WholeNumber(records->Text(id)), records->Text(text)});
    }
    return tables;
}

std::optional<QueryField> FindQueryField(const Layout& layout, DBEngine& engine, std::string_view nodeKey) {
    const double number = NumberOf(nodeKey);
    if (number < 1) return std::nullopt;
    const auto database = OpenReportDatabase(layout, engine);
    const auto row = database->OpenRecordset(
        "SELECT ID, Text, [Default Length] FROM [Report - Index] WHERE ID = " + TrimmedStr(number),
        RecordsetType::Snapshot);
    if (!row->HasRows()) return std::nullopt;
    return QueryField{CInt(Val(row->Text("ID"))), row->Text("Text"),
                      ValueLength(WholeNumber(row->Text("Default Length")))};
}

}  // namespace quillform::dialogs
