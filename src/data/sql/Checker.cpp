#include "data/sql/Checker.h"

#include "data/sql/ExpressionChecker.h"
#include "data/sql/SelectChecker.h"
#include "data/sql/TypeRules.h"
#include "platform/Text.h"

namespace quillform::sql {

int Checker::FindTable(std::string_view name) const {
    for (std::size_t i = 0; i < schema_.size(); ++i)
        if (EqualCaseBlind(schema_[i].Name, name)) return static_cast<int>(i);
    return -1;
}

std::size_t Checker::TableNamed(const std::string& name) const {
    const int position = FindTable(name);
    if (position < 0)
        throw RunTimeError(ErrorNumber::InputTableNotFound,
                           "The statement names table " + name + ", which the database doesn't hold.");
    const auto found = static_cast<std::size_t>(position);
    if (schema_[found].IsLinked)
        throw RunTimeError(ErrorNumber::NotSupported,
                           "Table " + name + " is a link to another file, whose rows can't be read here.");
    return found;
}

CheckedSource Checker::SourceOf(std::size_t position, const std::string& alias) const {
    CheckedSource source;
    source.table = schema_[position].Name;
    source.name = alias.empty() ? source.table : alias;
    source.position = position;
    source.fields = schema_[position].Fields;
    return source;
}

std::shared_ptr<const CheckedSelect> Checker::CheckSelect(const syntax::Select& select, const Scope* enclosing) const {
    return SelectChecker(*this, enclosing).Check(select);
}

CheckedSelect Checker::CheckTable(std::size_t position) const {
    CheckedSelect checked;
    checked.sources.push_back(SourceOf(TableNamed(schema_[position].Name), {}));
    auto from = std::make_shared<CheckedFrom>();
    from->source = 0;
    checked.from.push_back(std::move(from));
    Scope scope;
    scope.sources = &checked.sources;
    scope.end = 1;
    const CheckedSource& source = checked.sources.front();
    for (const Field& field : source.fields)
        checked.columns.push_back({field, Resolve(scope, source.name, field.Name)});
    return checked;
}

ExpressionRef Checker::CheckIn(Clause clause, const CheckedSelect& rows, const syntax::Expression& expression) const {
    Scope scope;
    scope.sources = &rows.sources;
    scope.end = rows.sources.size();
    scope.clause = clause;
    const ExpressionChecker::SelectChecker nested = [this](const syntax::Select& select, const Scope& around) {
        return CheckSelect(select, &around);
    };
    return ExpressionChecker(scope, currentYear_, nested).Check(expression);
}

CheckedSelect Checker::CheckCriteria(const syntax::Expression& condition, const TableDef& table) const {
    CheckedSelect checked;
    CheckedSource source;
    source.name = source.table = table.Name;
    source.fields = table.Fields;
    checked.sources.push_back(std::move(source));
    auto from = std::make_shared<CheckedFrom>();
    from->source = 0;
    checked.from.push_back(std::move(from));
    checked.where = AsCondition(CheckIn(Clause::Where, checked, condition));
    auto row = std::make_shared<CheckedExpression>();
    row->kind = CheckedExpression::Kind::RowId;
    row->source = 0;
    row->type = TypeOf(FieldType::Long);
    checked.columns.push_back({row->type, std::move(row)});
    return checked;
}

CheckedSelect Checker::RowsOf(const syntax::Statement& statement) const {
    CheckedSelect rows;
    rows.sources.push_back(SourceOf(TableNamed(statement.table), statement.alias));
    if (statement.where) rows.where = AsCondition(CheckIn(Clause::Where, rows, *statement.where));
    return rows;
}

CheckedAction Checker::CheckAction(const syntax::Statement& statement) const {
    CheckedAction action;
    action.rows = RowsOf(statement);
    if (statement.kind == syntax::Statement::Kind::Insert) CheckInsert(statement, action);
    if (statement.kind == syntax::Statement::Kind::Update) CheckUpdate(statement, action);
    return action;
}

namespace {

int ColumnOf(const CheckedSource& table, const std::string& name) {
    for (std::size_t i = 0; i < table.fields.size(); ++i)
        if (EqualCaseBlind(table.fields[i].Name, name)) return static_cast<int>(i);
    throw RunTimeError(ErrorNumber::UnknownTargetField,
                       "The statement sets [" + name + "], but table " + table.table + " has no column of that name.");
}

void AddTarget(CheckedAction& action, const CheckedSource& table, const std::string& name) {
    const int column = ColumnOf(table, name);
    for (const int before : action.columns)
        if (before == column)
            throw RunTimeError(ErrorNumber::DuplicateTarget, "The statement sets column [" + name + "] twice.");
    action.columns.push_back(column);
}

}  // namespace

void Checker::CheckInsert(const syntax::Statement& statement, CheckedAction& action) const {
    const CheckedSource table = action.rows.sources.front();
    for (const std::string& name : statement.columns) AddTarget(action, table, name);
    if (statement.columns.empty())
        for (std::size_t i = 0; i < table.fields.size(); ++i) action.columns.push_back(static_cast<int>(i));
    if (statement.select) action.select = CheckSelect(*statement.select);
    const std::size_t given = action.select ? action.select->columns.size() : statement.values.size();
    if (given != action.columns.size())
        throw RunTimeError(ErrorNumber::ValueCount, "The statement gives " + std::to_string(given) + " values for " +
                                                        std::to_string(action.columns.size()) + " columns.");
    const CheckedSelect nothing;
    for (std::size_t i = 0; i < statement.values.size(); ++i) {
        const Field& field = table.fields[static_cast<std::size_t>(action.columns[i])];
        action.values.push_back(AsType(CheckIn(Clause::Values, nothing, *statement.values[i]), field, currentYear_));
    }
}

void Checker::CheckUpdate(const syntax::Statement& statement, CheckedAction& action) const {
    const CheckedSource& table = action.rows.sources.front();
    for (const syntax::Assignment& assignment : statement.assignments) {
        AddTarget(action, table, assignment.column);
        const Field& field = table.fields[static_cast<std::size_t>(action.columns.back())];
        ExpressionRef value = CheckIn(Clause::Values, action.rows, *assignment.value);
        action.rows.columns.push_back({field, AsType(std::move(value), field, currentYear_)});
    }
}

}  // namespace quillform::sql
