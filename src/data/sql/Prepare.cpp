#include "data/sql/Prepare.h"

#include <algorithm>

#include "data/sql/Checker.h"
#include "data/sql/Parser.h"
#include "data/sql/SqliteWriter.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

/// Collects the tables of a select and of all selects in it.
class TableCollector {
public:
    explicit TableCollector(std::vector<std::size_t>& tables) : tables_(tables) {}

    void Add(std::size_t table) {
        if (std::find(tables_.begin(), tables_.end(), table) == tables_.end()) tables_.push_back(table);
    }
    void Add(const CheckedSelect& select) {
        AddSources(select);
        ForEachExpression(select, [this](const CheckedExpression& expression) { Add(expression); });
    }
    void Add(const CheckedExpression& expression) {
        for (const ExpressionRef& operand : expression.operands) Add(*operand);
        if (expression.select) Add(*expression.select);
    }

private:
    void AddSources(const CheckedSelect& select) {
        for (const CheckedSource& source : select.sources)
            if (!source.select) Add(source.position);
        for (const CheckedSource& source : select.sources)
            if (source.select) Add(*source.select);
        for (const CheckedSelect::Union& further : select.unions) AddSources(*further.select);
    }

    std::vector<std::size_t>& tables_;
};

PreparedStatement::Origin OriginOf(const CheckedSelect& select, const CheckedExpression& expression,
                                   const std::vector<std::size_t>& tables) {
    if (expression.kind != Kind::Column || expression.outer != 0 || !select.unions.empty()) return {};
    const CheckedSource& source = select.sources[static_cast<std::size_t>(expression.source)];
    if (source.select) return {};
    const auto at = std::find(tables.begin(), tables.end(), source.position);
    return {static_cast<int>(at - tables.begin()), expression.column};
}

PreparedStatement PreparedSelect(std::shared_ptr<const CheckedSelect> select) {
    PreparedStatement prepared;
    prepared.kind = StatementKind::Select;
    TableCollector(prepared.tables).Add(*select);
    for (const CheckedColumn& column : select->columns) {
        prepared.columns.push_back(column.field);
        prepared.origins.push_back(OriginOf(*select, *column.expression, prepared.tables));
    }
    prepared.sqlite = WriteSelect(*select);
    prepared.select = std::move(select);
    return prepared;
}

PreparedStatement PreparedAction(syntax::Statement::Kind kind, CheckedAction action) {
    PreparedStatement prepared;
    prepared.target = action.rows.sources.front().position;
    TableCollector tables(prepared.tables);
    tables.Add(action.rows);
    for (const ExpressionRef& value : action.values) tables.Add(*value);
    if (action.select) tables.Add(*action.select);
    switch (kind) {
        case syntax::Statement::Kind::Select:
            break;
        case syntax::Statement::Kind::Delete:
            prepared.kind = StatementKind::Delete;
            prepared.sqlite = WriteDelete(action);
            break;
        case syntax::Statement::Kind::Insert:
            prepared.kind = StatementKind::Insert;
            prepared.sqlite = WriteInsert(action);
            break;
        case syntax::Statement::Kind::Update:
            prepared.kind = StatementKind::Update;
            prepared.sqlite = WriteUpdate(action);
            break;
    }
    prepared.action = std::make_shared<const CheckedAction>(std::move(action));
    return prepared;
}

/// Position of the table whose bare or bracketed name is the whole statement; -1 if it is none.
int TableAlone(std::string_view statement, const Checker& checker) {
    std::string_view name = Trim(statement);
    const int found = checker.FindTable(name);
    if (found >= 0 || name.size() < 2 || name.front() != '[' || name.back() != ']') return found;
    return checker.FindTable(name.substr(1, name.size() - 2));
}

}  // namespace

PreparedStatement Prepare(std::string_view statement, const Schema& schema, int currentYear) {
    const Checker checker(schema, currentYear);
    if (const int table = TableAlone(statement, checker); table >= 0)
        return PreparedSelect(
            std::make_shared<const CheckedSelect>(checker.CheckTable(static_cast<std::size_t>(table))));
    const syntax::Statement parsed = Parse(statement);
    if (parsed.kind == syntax::Statement::Kind::Select) return PreparedSelect(checker.CheckSelect(*parsed.select));
    return PreparedAction(parsed.kind, checker.CheckAction(parsed));
}

PreparedStatement PrepareCriteria(std::string_view criteria, const TableDef& table, int currentYear) {
    const Schema schema{table};
    const Checker checker(schema, currentYear);
    const syntax::ExpressionPtr condition = ParseCondition(criteria);
    return PreparedSelect(std::make_shared<const CheckedSelect>(checker.CheckCriteria(*condition, table)));
}

}  // namespace quillform::sql
