#pragma once

#include <memory>
#include <string_view>

#include "data/sql/CheckedTree.h"
#include "data/sql/Scope.h"
#include "data/sql/SyntaxTree.h"

namespace quillform::sql {

/// Checks statements against the tables of one database.
class Checker {
public:
    Checker(const std::vector<TableDef>& schema, int currentYear) : schema_(schema), currentYear_(currentYear) {}

    /// `enclosing` is what a sub-select sees around it.
    std::shared_ptr<const CheckedSelect> CheckSelect(const syntax::Select& select,
                                                     const Scope* enclosing = nullptr) const;
    CheckedAction CheckAction(const syntax::Statement& statement) const;
    /// The row identities of the table's rows that meet the condition.
    CheckedSelect CheckCriteria(const syntax::Expression& condition, const TableDef& table) const;
    /// All rows and columns of a table.
    CheckedSelect CheckTable(std::size_t position) const;

    /// Position of the table in the schema, names compared case-blind; -1 if there is none.
    int FindTable(std::string_view name) const;
    /// RunTimeError InputTableNotFound; NotSupported for a linked table.
    std::size_t TableNamed(const std::string& name) const;

private:
    CheckedSource SourceOf(std::size_t position, const std::string& alias) const;
    CheckedSelect RowsOf(const syntax::Statement& statement) const;
    void CheckInsert(const syntax::Statement& statement, CheckedAction& action) const;
    void CheckUpdate(const syntax::Statement& statement, CheckedAction& action) const;
    ExpressionRef CheckIn(Clause clause, const CheckedSelect& rows, const syntax::Expression& expression) const;

    friend class SelectChecker;
    const std::vector<TableDef>& schema_;
    int currentYear_;
};

}  // namespace quillform::sql
