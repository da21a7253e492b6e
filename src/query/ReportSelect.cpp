#include "query/ReportSelect.h"

#include <cmath>

#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {

namespace {

std::string Column(const CatalogRow& row) { return "[" + row.table + "].[" + row.field + "]"; }

/// Name of an aggregate formula in statements; null for the others.
const char* AggregateName(int functionCode) {
    switch (static_cast<FunctionCode>(functionCode)) {
        case FunctionCode::Count:
            return "Count";
        case FunctionCode::Sum:
            return "Sum";
        case FunctionCode::Average:
            return "Avg";
        case FunctionCode::StandardDeviation:
            return "StdDev";
        case FunctionCode::PopulationDeviation:
            return "StdDevP";
        case FunctionCode::None:
        case FunctionCode::Mid:
        case FunctionCode::Right:
        case FunctionCode::Left:
            return nullptr;
    }
    return nullptr;
}

/// "Mid$([T].[F], P1, P2)" and its kin; empty for the others.
std::string TextFormula(const CatalogRow& row) {
    switch (static_cast<FunctionCode>(row.functionCode)) {
        case FunctionCode::Mid:
            return "Mid$(" + Column(row) + ", " + row.parameter1 + ", " + row.parameter2 + ")";
        case FunctionCode::Left:
            return "Left$(" + Column(row) + ", " + row.parameter1 + ")";
        case FunctionCode::Right:
            return "Right$(" + Column(row) + ", " + row.parameter1 + ")";
        case FunctionCode::None:
        case FunctionCode::Sum:
        case FunctionCode::Count:
        case FunctionCode::Average:
        case FunctionCode::StandardDeviation:
        case FunctionCode::PopulationDeviation:
            return {};
    }
    return {};
}

std::string AggregateFormula(const CatalogRow& row) {
    const char* name = AggregateName(row.functionCode);
    return name ? std::string(name) + "(" + Column(row) + ")" : std::string();
}

/// What the column list selects for a row; empty if nothing.
std::string ColumnFragment(const CatalogRow& row) {
    if (!row.formulaFlag) return Column(row);
    std::string formula = TextFormula(row);
    if (formula.empty()) formula = AggregateFormula(row);
    if (formula.empty()) return {};
    return " " + formula + "  AS [" + row.aliasName + "] ";
}

/// Left side of a condition on a row with the blanks around it, and whether the value is quoted; empty if a condition
/// on such a row can't be.
struct ConditionSide {
    std::string text;
    bool quoted = false;
    bool formula = false;
};
ConditionSide SideOf(const CatalogRow& row) {
    if (!row.formulaFlag) return {Column(row), !row.numeric, false};
    const std::string formula = row.numeric ? AggregateFormula(row) : TextFormula(row);
    if (formula.empty()) return {};
    return {" " + formula, !row.numeric, true};
}

void AppendSortPass(const collFields& items, const Catalog& catalog, bool clssFields::*level, std::string& order) {
    for (const clssFields& item : items) {
        if (!(item.*level)) continue;
        const CatalogRow* row = catalog.Find(item.Code);
        if (!row) continue;
        if (!order.empty()) order += ", ";
        order += Column(*row);
    }
}

std::string SortList(const collFields& items, const Catalog& catalog) {
    std::string order;
    AppendSortPass(items, catalog, &clssFields::PrimarySort, order);
    AppendSortPass(items, catalog, &clssFields::SecondarySort, order);
    AppendSortPass(items, catalog, &clssFields::TriarySort, order);
    return order;
}

std::string Condition(const clssQuery& line, const CatalogRow& row) {
    const ConditionSide side = SideOf(row);
    if (side.text.empty()) return {};
    const std::string head = side.text + " " + std::string(Trim(line.Operator)) + " ";
    if (!side.quoted) return head + std::string(Trim(line.Value));
    // On a plain column outer blanks of the value are noise; on a cut-out piece of text they may be meant.
    const std::string_view value = side.formula ? std::string_view(line.Value) : Trim(line.Value);
    return head + "'" + std::string(value) + "'";
}

void AppendConditions(const collQuery& queries, const Catalog& catalog, ReportSelect& select) {
    for (const clssQuery& line : queries) {
        const CatalogRow* row = catalog.Find(line.Code);
        if (!row) continue;
        const std::string condition = Condition(line, *row);
        if (condition.empty()) continue;
        if (!select.strWhere.empty()) {
            const bool isAnd = Trim(line.Join) == "AND";
            select.strWhere += isAnd ? " AND " : " OR ";
            select.hasOr = select.hasOr || !isAnd;
        }
        select.strWhere += condition;
    }
    select.strWhere = std::string(Trim(select.strWhere));
}

void AppendColumns(collFields& items, const Catalog& catalog, ReportSelect& select) {
    int columns = 0;
    for (clssFields& item : items) {
        select.itemColumns.push_back(-1);
        if (!IsDataItem(item)) continue;
        const CatalogRow* row = catalog.Find(item.Code);
        if (!row) {
            item.Code = ItemCode::Text;
            continue;
        }
        const std::string fragment = ColumnFragment(*row);
        if (fragment.empty()) continue;
        if (!select.strColumns.empty()) select.strColumns += ", ";
        select.strColumns += fragment;
        select.itemColumns.back() = columns++;
    }
}

class TableList {
public:
    void Add(const CatalogRow* row) {
        if (!row) return;
        for (const std::string& name : names_)
            if (name == row->table) return;
        if (names_.size() == maximumTables)
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange,
                               "The report draws on more than " + std::to_string(maximumTables) +
                                   " tables; the table \"" + row->table + "\" is one too many.");
        names_.push_back(row->table);
    }

    std::string From(const Catalog& catalog, JoinRule joinRule) const {
        if (names_.empty()) return {};
        std::string from = "[" + names_[0] + "]";
        for (std::size_t j = 0; j < names_.size(); ++j)
            for (std::size_t k = j + 1; k < names_.size(); ++k) {
                const CatalogRelation* relation = catalog.FindRelation(names_[j], names_[k]);
                if (relation) from = Joined(from, names_[k], *relation, joinRule);
            }
        return from;
    }

private:
    static const char* JoinWord(JoinRule joinRule) {
        switch (joinRule) {
            case JoinRule::Inner:
                return " INNER JOIN [";
            case JoinRule::Left:
                return " LEFT JOIN [";
            case JoinRule::Right:
                return " RIGHT JOIN [";
        }
        return " INNER JOIN [";
    }
    static std::string Joined(const std::string& from, const std::string& table, const CatalogRelation& relation,
                              JoinRule joinRule) {
        return "(" + from + JoinWord(joinRule) + table + "] ON [" + relation.table1 + "].[" + relation.field1 +
               "] = [" + relation.table2 + "].[" + relation.field2 + "])";
    }

    std::vector<std::string> names_;
};

std::string Clause(const std::string& where, const std::string& orderBy) {
    std::string clause;
    if (!where.empty()) clause += " WHERE " + where;
    if (!orderBy.empty()) clause += " ORDER BY " + orderBy;
    return clause;
}

std::string GroupTerm(const CatalogRow& primary, const ValueView& key) {
    if (key.IsNull()) return Column(primary) + " Is Null";
    const ConditionSide side = SideOf(primary);
    if (side.text.empty()) return {};
    const std::string value = std::string(Trim(GeneralText(key)));
    return side.text + " = " + (side.quoted ? "'" + value + "'" : value);
}

}  // namespace

ReportSelect BuildReportSelect(collFields& items, const collQuery& queries, const Catalog& catalog, JoinRule joinRule) {
    ReportSelect select;
    AppendColumns(items, catalog, select);
    select.strOrderBy = SortList(items, catalog);
    AppendConditions(queries, catalog, select);
    TableList tables;
    for (const clssFields& item : items) tables.Add(catalog.Find(item.Code));
    for (const clssQuery& line : queries) tables.Add(catalog.Find(line.Code));
    select.strFrom = tables.From(catalog, joinRule);
    return select;
}

std::string ReportStatement(const ReportSelect& select) {
    return "SELECT " + select.strColumns + " FROM " + select.strFrom + Clause(select.strWhere, select.strOrderBy);
}

std::string GroupListStatement(const ReportSelect& select, const CatalogRow& primary) {
    return "SELECT " + Column(primary) + " FROM " + select.strFrom + Clause(select.strWhere, {}) + " GROUP BY " +
           Column(primary);
}

std::string GroupStatement(const ReportSelect& select, const CatalogRow& primary, const ValueView& key) {
    std::string where = select.strWhere;
    const std::string term = GroupTerm(primary, key);
    if (!term.empty()) {
        if (!where.empty()) where += " AND ";
        where += term;
    }
    return "SELECT " + select.strColumns + " FROM " + select.strFrom + Clause(where, select.strOrderBy);
}

bool GroupStatementIsExact(const CatalogRow& primary, const ValueView& key) {
    if (primary.formulaFlag) return false;
    // A row marked numeric writes its value bare, which a text or a date doesn't survive.
    if (primary.numeric && (key.kind == ValueKind::Text || key.kind == ValueKind::Date)) return false;
    switch (key.kind) {
        case ValueKind::Null:
        case ValueKind::Integer:
        case ValueKind::Currency:
        case ValueKind::Boolean:
        case ValueKind::Decimal:
            return true;
        case ValueKind::Double:
            return Val(GeneralText(key)) == key.real;
        case ValueKind::Date: {
            const double seconds = TimePartOf(key.real) * 86400;
            return std::abs(seconds - std::round(seconds)) < 1e-3;
        }
        case ValueKind::Text:
            return key.text.find('\'') == std::string_view::npos && Trim(key.text).size() == key.text.size();
        case ValueKind::Single:
        case ValueKind::Guid:
        case ValueKind::Binary:
            return false;
    }
    return false;
}

}  // namespace quillform
