#pragma once

#include <functional>
#include <string>
#include <vector>

#include "data/sql/CheckedTree.h"

namespace quillform::sql {

/// Where an expression stands: what an aggregate may do there.
enum class Clause { Columns, Where, Join, GroupBy, Having, OrderBy, Values };

/// What names mean at one place of one select.
struct Scope {
    const Scope* enclosing = nullptr;
    const std::vector<CheckedSource>* sources = nullptr;
    /// Sources whose columns may be named: all but in a join, which names only those it joins.
    std::size_t first = 0;
    std::size_t end = 0;
    Clause clause = Clause::Columns;
    /// Gives the column under an alias where aliases count; null where there is none.
    std::function<ExpressionRef(const std::string&)> alias;
};

/// The column that a name stands for. RunTimeError TooFewParameters if there is none, AmbiguousField if there are
/// several, JoinSyntax for a table outside the join.
ExpressionRef Resolve(const Scope& scope, const std::string& qualifier, const std::string& name);

/// "[table].[column]".
std::string WrittenName(const std::string& qualifier, const std::string& name);

}  // namespace quillform::sql
