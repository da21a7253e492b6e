#include "catalog/DefaultAnswers.h"

#include <algorithm>
#include <memory>

#include "catalog/CatalogDefinitions.h"
#include "catalog/CatalogTables.h"
#include "catalog/CatalogWriter.h"
#include "catalog/FieldRows.h"
#include "catalog/TableLinks.h"
#include "model/clssFields.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::size_t longestName = 50;
constexpr std::size_t longestText = 50;
constexpr int memoWidth = 50;
constexpr int guidWidth = 38;  // 32 digits, 4 hyphens, 2 braces

/// Many changes as one: dropped unless Commit is reached.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(database) { database_.BeginTrans(); }
    ~Transaction() {
        if (isDone_) return;
        try {
            database_.Rollback();
        } catch (const RunTimeError&) {
            // The failure that led here is the one to tell; what isn't committed never reaches the file anyway.
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit() {
        database_.CommitTrans();
        isDone_ = true;
    }

private:
    Database& database_;
    bool isDone_ = false;
};

std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

std::string Counted(std::size_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

/// Why neither catalog nor statements can carry the name; empty if they can.
std::string NameProblem(std::string_view name) {
    if (CountCharacters(name) > longestName)
        return "its name has more than " + std::to_string(longestName) + " characters";
    if (name.find_first_of("[]") != std::string_view::npos) return "its name holds a bracket";
    return {};
}

/// Why the field can't be on a report; empty if it can.
std::string FieldProblem(const Field& field) {
    if (field.Type == FieldType::Binary || field.Type == FieldType::LongBinary)
        return std::string(FieldTypeName(field.Type)) + " fields can't be printed";
    return NameProblem(field.Name);
}

Field AsText(const Field& field, int width) {
    Field text = field;
    text.Type = FieldType::Text;
    text.Size = width;
    return text;
}

/// The description of a date row stands before " (mask)" in one column.
std::string_view DateDescription(std::string_view name, std::string_view mask) {
    constexpr std::size_t around = 3;  // " (" and ")"
    return LeftCharacters(name, longestText - around - mask.size());
}

/// The rows that the proposed answers give for one field.
std::vector<CatalogRow> RowsOf(std::string_view table, const Field& field) {
    if (field.Type == FieldType::Memo) return {TextRow(table, AsText(field, memoWidth), field.Name, {})};
    if (field.Type == FieldType::Guid) return {TextRow(table, AsText(field, guidWidth), field.Name, {})};
    switch (FieldKindOf(field.Type)) {
        case FieldKind::Boolean:
            return {BooleanRow(table, field, field.Name)};
        case FieldKind::Text:
            return {TextRow(table, field, field.Name, {})};
        case FieldKind::Number:
            return {NumberRow(table, field, field.Name, ProposedNumberMask(field.Type))};
        case FieldKind::Date:
            break;
    }
    std::vector<CatalogRow> rows;
    for (const std::string_view mask : proposedDateMasks)
        rows.push_back(DateRow(table, field, DateDescription(field.Name, mask), mask));
    return rows;
}

/// Fills `Report - Index` until no more rows can be selected.
class IndexFiller {
public:
    IndexFiller(Database& database, Recordset& records, std::string_view path, ConfigurationReport& report)
        : writer_(records, path), nextId_(NextCatalogId(database)), report_(report) {}

    void Add(const TableDef& table) {
        for (const Field& field : table.Fields) {
            const std::string problem = FieldProblem(field);
            if (problem.empty())
                Add(table.Name, field);
            else
                Note("The field " + Quoted(field.Name) + " of " + Quoted(table.Name) + " is left out: " + problem +
                     ".");
        }
        ++tables_;
    }

    void Finish() {
        report_.made.push_back("Made the table " + Quoted(catalogIndexTable) + " with " +
                               Counted(rows_, "row", "rows") + " for " + Counted(fields_, "field", "fields") + " of " +
                               Counted(tables_, "table", "tables") + ".");
        if (wholeAmounts_ > 0)
            Note(Counted(wholeAmounts_, "currency or decimal field has", "currency or decimal fields have") +
                 " the mask \"" + std::string(ProposedNumberMask(FieldType::Currency)) +
                 "\", which prints no decimals; an item that should show them needs another mask.");
        if (fieldsWithoutRoom_ > 0)
            Note(Counted(fieldsWithoutRoom_, "field is", "fields are") +
                 " left out or lacking masks, because a report can select only " +
                 std::to_string(ItemCode::LastCatalog) + " catalog rows; the first is " + firstWithoutRoom_ + ".");
    }

private:
    void Add(const std::string& table, const Field& field) {
        std::vector<CatalogRow> rows = RowsOf(table, field);
        const int room = std::max(ItemCode::LastCatalog - nextId_ + 1, 0);
        const std::size_t count = std::min(rows.size(), static_cast<std::size_t>(room));
        for (std::size_t i = 0; i < count; ++i) {
            rows[i].id = nextId_++;
            writer_.Write(rows[i]);
        }
        rows_ += count;
        if (count > 0) ++fields_;
        if (count < rows.size()) return CountWithoutRoom(table, field);
        TellWhatIsCut(table, field);
        if (field.Type == FieldType::Currency || field.Type == FieldType::Decimal) ++wholeAmounts_;
    }
    void CountWithoutRoom(const std::string& table, const Field& field) {
        if (fieldsWithoutRoom_++ == 0) firstWithoutRoom_ = Quoted(field.Name) + " of " + Quoted(table);
    }
    void TellWhatIsCut(const std::string& table, const Field& field) {
        if (field.Type != FieldType::Date) return;
        for (const std::string_view mask : proposedDateMasks)
            if (DateDescription(field.Name, mask) != field.Name)
                return Note("The description of " + Quoted(field.Name) + " of " + Quoted(table) +
                            " is cut, so that it and its mask fit into " + std::to_string(longestText) +
                            " characters.");
    }
    void Note(std::string sentence) { report_.notes.push_back(std::move(sentence)); }

    IndexWriter writer_;
    std::int32_t nextId_;
    ConfigurationReport& report_;
    std::size_t tables_ = 0;
    std::size_t fields_ = 0;
    std::size_t rows_ = 0;
    std::size_t wholeAmounts_ = 0;
    std::size_t fieldsWithoutRoom_ = 0;
    std::string firstWithoutRoom_;
};

class DefaultConfiguration {
public:
    DefaultConfiguration(Database& database, std::string_view path) : database_(database), path_(path) {}

    ConfigurationReport Run() {
        const bool lacksIndex = Lacks(catalogIndexTable);
        const bool lacksRelations = Lacks(catalogRelationTable);
        const bool lacksLabels = Lacks(catalogLabelsTable);
        if (!lacksIndex && !lacksRelations && !lacksLabels) return report_;

        Transaction work(database_);
        const std::vector<TableDef> tables = lacksIndex || lacksRelations ? UserTables() : std::vector<TableDef>();
        if (lacksIndex) MakeIndex(tables);
        if (lacksRelations) MakeRelations(tables);
        if (lacksLabels) MakeLabels();
        work.Commit();
        return report_;
    }

private:
    bool Lacks(std::string_view table) const { return database_.FindTable(table) == nullptr; }

    /// Copies, because making a table changes the list.
    std::vector<TableDef> UserTables() {
        std::vector<TableDef> tables;
        for (const TableDef& table : database_.TableDefs()) {
            if (!IsOfferedTable(table.Name) || table.IsSystem) continue;
            std::string problem = NameProblem(table.Name);
            if (table.IsLinked) problem = "its records are in another file";
            if (problem.empty())
                tables.push_back(table);
            else
                report_.notes.push_back("The table " + Quoted(table.Name) + " is left out: " + problem + ".");
        }
        return tables;
    }

    void MakeIndex(const std::vector<TableDef>& tables) {
        database_.AppendTable(IndexTableDef());
        const auto records = database_.OpenRecordset("SELECT * FROM [Report - Index]", RecordsetType::Dynaset);
        IndexFiller filler(database_, *records, path_, report_);
        for (const TableDef& table : tables) filler.Add(table);
        filler.Finish();
    }
    void MakeRelations(const std::vector<TableDef>& tables) {
        database_.AppendTable(RelationTableDef());
        const auto records = database_.OpenRecordset("SELECT * FROM [Report - Relation]", RecordsetType::Dynaset);
        RelationWriter writer(*records, path_, path_);
        TableLinks links = LinkTables(tables, database_.Relations());
        for (const CatalogRelation& relation : links.relations) writer.Write(relation);
        report_.made.push_back("Made the table " + Quoted(catalogRelationTable) + " with " +
                               Counted(links.relations.size(), "relation", "relations") + ".");
        for (std::string& sentence : links.leftOut) report_.notes.push_back(std::move(sentence));
    }
    void MakeLabels() {
        database_.AppendTable(LabelsTableDef());
        report_.made.push_back("Made the table " + Quoted(catalogLabelsTable) + ", empty.");
    }

    Database& database_;
    std::string_view path_;
    ConfigurationReport report_;
};

}  // namespace

std::vector<std::string> ConfigurationReport::Lines() const {
    if (!Changed()) return {"The database has its three catalog tables already; nothing was changed."};
    std::vector<std::string> lines = made;
    lines.insert(lines.end(), notes.begin(), notes.end());
    return lines;
}

ConfigurationReport ConfigureWithDefaults(Database& database, std::string_view databasePath) {
    return DefaultConfiguration(database, databasePath).Run();
}

}  // namespace quillform
