#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/DataAccess.h"

namespace quillform::sql {

struct CheckedSelect;
struct CheckedAction;

/// What the checker knows about a database: its tables, by pointer into `Database::TableDefs`-like storage.
using Schema = std::vector<TableDef>;

enum class StatementKind { Select, Delete, Insert, Update };

/// A statement of the report dialect, parsed, checked and written out again for SQLite.
///
/// In the SQLite text tables stand under their own names, quoted; values travel like this:
///
/// | type                     | in SQLite                                                        |
/// |--------------------------|------------------------------------------------------------------|
/// | Boolean                  | INTEGER -1 or 0                                                  |
/// | Byte, Integer, Long      | INTEGER                                                          |
/// | Currency, Decimal        | REAL, the amount                                                 |
/// | Single, Double           | REAL                                                             |
/// | Date                     | REAL, days since 1899-12-30                                      |
/// | Text, Memo, Guid         | TEXT; compared, grouped and sorted by the collation QFTEXT       |
/// | Binary, LongBinary       | BLOB                                                             |
///
/// Conditions may also give SQLite's own 1 and 0 where only their truth counts; as values they are -1 and 0.
///
/// Functions and operators that SQLite lacks or reads otherwise are calls of functions named "qf_" and the dialect's
/// name in lower case without `$`: qf_mid, qf_format, qf_dateadd, ..., with the arguments as written. Exceptions:
/// qf_instr always has its place to start in front; qf_format(value, mask, type) has the number of the value's type
/// behind, qf_text(value, type) gives the general text of what isn't a text. IIf, Switch, Choose, Nz and IsNull become
/// SQLite's CASE, coalesce and IS NULL, so only the branch that is taken is computed. ChrW and AscW are qf_chr and
/// qf_asc. Where a text is needed it has been converted already; where a number or date is needed and a text stands, it
/// goes through qf_cdbl or qf_cdate. Operators: qf_concat (& of two texts that may be Null), qf_divide (/), qf_intdiv
/// (\), qf_mod, qf_power (^), qf_like(text, pattern), and of truths qf_xor, qf_eqv, qf_imp. Aggregates beyond SQLite's:
/// qf_stdev, qf_stdevp, qf_var, qf_varp, qf_first, qf_last. Conversions of literals to dates are done while preparing.
struct PreparedStatement {
    StatementKind kind = StatementKind::Select;
    std::string sqlite;
    std::vector<Field> columns;       ///< results of a Select, by plain field name or alias
    std::vector<std::size_t> tables;  ///< positions in the schema of all tables used, each once, sub-selects' included
    std::size_t target = 0;           ///< Delete, Insert, Update: position in the schema of the table changed
    /// Plain result columns: table of `tables` and column that the result column passes on unchanged; -1 otherwise.
    struct Origin {
        int table = -1;
        int column = -1;
    };
    std::vector<Origin> origins;
    /// What was written to SQLite, for those who run statements otherwise: see CheckedTree.h. A Select has `select`,
    /// the others `action`.
    std::shared_ptr<const CheckedSelect> select;
    std::shared_ptr<const CheckedAction> action;
};

/// Parses and checks one statement. Every refusal is a RunTimeError whose sentence names the cause: SyntaxError,
/// InputTableNotFound, TooFewParameters (unknown column), AmbiguousField, AggregateInWhere, NotPartOfAggregate,
/// JoinNotSupported, JoinSyntax, DataTypeMismatch, UnknownFunction, ...
///
/// What the dialect leaves open is settled so: an expression without alias is named Expr and 1000 plus its position
/// among the columns; an alias may be named by later columns and by ORDER BY where no column has that name, nowhere
/// else; a text literal beside a date, number or Boolean is read as one; Sum and Avg of Currency are Currency, Sum of
/// Decimal is Decimal, all others Double; TOP n gives ties with its last row; Null sorts first; all joins nest freely.
/// A table name alone stands for all its rows. `currentYear` completes dates written without one.
PreparedStatement Prepare(std::string_view statement, const Schema& schema, int currentYear);

/// A criteria text (FindFirst) over one table, as a complete Select of the row ids that meet it.
PreparedStatement PrepareCriteria(std::string_view criteria, const TableDef& table, int currentYear);

/// Quotes a name for SQLite.
std::string QuotedName(std::string_view name);

}  // namespace quillform::sql
