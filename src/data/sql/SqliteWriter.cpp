#include "data/sql/SqliteWriter.h"

#include "data/sql/Prepare.h"
#include "data/sql/SqliteExpression.h"
#include "data/sql/TypeRules.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

std::string QuotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted += '"';
}

std::string QuotedText(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'') quoted += '\'';
        quoted += c;
    }
    return quoted += '\'';
}

namespace {

class SelectWriter {
public:
    SelectWriter(SelectStack& stack, const CheckedSelect& select, std::string& out)
        : stack_(stack), select_(select), out_(out) {
        stack_.push_back(&select);
    }
    ~SelectWriter() { stack_.pop_back(); }
    SelectWriter(const SelectWriter&) = delete;
    SelectWriter& operator=(const SelectWriter&) = delete;

    void Write(bool namedColumns);

private:
    void Core(bool namedColumns);
    void Columns(bool named);
    void Tables();
    void Source(std::size_t position);
    void Joined(const CheckedFrom& from);
    /// FROM to HAVING.
    void Rest();
    void Groups();
    /// `byName`: in a select around this one, by the names of its columns.
    void OrderBy(bool byName = false);
    int SelectColumn(const CheckedExpression& expression) const;
    void RankedTop();
    void Limit();
    SqliteExpression Expressions() { return {stack_, out_}; }

    SelectStack& stack_;
    const CheckedSelect& select_;
    std::string& out_;
};

void SelectWriter::Write(bool namedColumns) {
    // Ties and parts of a hundred need the rank of every row.
    if (select_.hasTop && (select_.topPercent || !select_.orderBy.empty())) return RankedTop();
    Core(namedColumns || !select_.unions.empty());
    OrderBy();
    if (select_.hasTop) Limit();
}

void SelectWriter::Core(bool namedColumns) {
    out_ += select_.distinct ? "SELECT DISTINCT " : "SELECT ";
    Columns(namedColumns);
    Rest();
    for (const CheckedSelect::Union& further : select_.unions) {
        out_ += further.all ? " UNION ALL " : " UNION ";
        // The part stands beside this select, not in it.
        stack_.pop_back();
        AppendSelect(stack_, *further.select, out_);
        stack_.push_back(&select_);
    }
}

void SelectWriter::Rest() {
    Tables();
    if (select_.where) {
        out_ += " WHERE ";
        Expressions().Condition(*select_.where);
    }
    Groups();
}

void SelectWriter::Columns(bool named) {
    bool uniting = false;
    for (const CheckedSelect::Union& further : select_.unions) uniting = uniting || !further.all;
    for (std::size_t i = 0; i < select_.columns.size(); ++i) {
        if (i > 0) out_ += ", ";
        const CheckedExpression& expression = *select_.columns[i].expression;
        if (select_.distinct || uniting)
            Expressions().Key(expression);
        else
            Expressions().Value(expression);
        if (named) out_ += " AS " + ColumnName(static_cast<int>(i));
    }
}

void SelectWriter::Source(std::size_t position) {
    const CheckedSource& source = select_.sources[position];
    if (source.select) {
        // A select in FROM sees nothing of what stands beside it.
        SelectStack around;
        out_ += '(';
        AppendSelect(around, *source.select, out_, true);
        out_ += ')';
    } else {
        out_ += QuotedName(source.table);
    }
    const std::string name = SourceName(stack_, stack_.size() - 1, position);
    if (source.select || name != source.table) out_ += " AS " + QuotedName(name);
}

void SelectWriter::Joined(const CheckedFrom& from) {
    if (from.source >= 0) return Source(static_cast<std::size_t>(from.source));
    Joined(*from.left);
    out_ += from.outer ? " LEFT JOIN " : " JOIN ";
    const bool nested = from.right->source < 0;
    if (nested) out_ += '(';
    Joined(*from.right);
    if (nested) out_ += ')';
    out_ += " ON ";
    Expressions().Condition(*from.on);
}

void SelectWriter::Tables() {
    for (std::size_t i = 0; i < select_.from.size(); ++i) {
        out_ += i == 0 ? " FROM " : ", ";
        // A comma binds no tighter than a join in SQLite.
        const bool nested = i > 0 && select_.from[i]->source < 0;
        if (nested) out_ += '(';
        Joined(*select_.from[i]);
        if (nested) out_ += ')';
    }
}

void SelectWriter::Groups() {
    const char* separator = " GROUP BY ";
    for (const ExpressionRef& group : select_.groupBy) {
        out_ += separator;
        Expressions().Key(*group);
        separator = ", ";
    }
    if (select_.distinctRows) {
        for (std::size_t i = 0; i < select_.sources.size(); ++i) {
            if (select_.sources[i].contributed == 0) continue;
            CheckedExpression row;
            row.kind = Kind::RowId;
            row.source = static_cast<int>(i);
            out_ += separator;
            Expressions().Value(row);
            separator = ", ";
        }
    }
    if (select_.having) {
        out_ += " HAVING ";
        Expressions().Condition(*select_.having);
    }
}

void SelectWriter::OrderBy(bool byName) {
    const char* separator = byName || select_.hasTop ? "ORDER BY " : " ORDER BY ";
    for (const CheckedSort& sort : select_.orderBy) {
        out_ += separator;
        const int column = sort.expression && byName ? SelectColumn(*sort.expression) : sort.column;
        if (column < 0) {
            Expressions().Key(*sort.expression);
        } else {
            out_ += ColumnName(column);
            if (IsText(*select_.columns[static_cast<std::size_t>(column)].expression)) out_ += " COLLATE QFTEXT";
        }
        if (sort.descending) out_ += " DESC";
        separator = ", ";
    }
}

int SelectWriter::SelectColumn(const CheckedExpression& expression) const {
    for (std::size_t i = 0; i < select_.columns.size(); ++i)
        if (Same(*select_.columns[i].expression, expression)) return static_cast<int>(i);
    return -1;
}

/// SELECT c0, ... FROM (SELECT ... AS c0, ..., rank() OVER (...) AS place, count(*) OVER () AS total ...) WHERE place
/// ...
void SelectWriter::RankedTop() {
    std::string names;
    for (std::size_t i = 0; i < select_.columns.size(); ++i) {
        if (i > 0) names += ", ";
        names += ColumnName(static_cast<int>(i));
    }
    out_ += "SELECT " + names + " FROM (SELECT ";
    // Places are given before DISTINCT and UNION drop rows, so those must be done further in.
    const bool inner = select_.distinct || !select_.unions.empty();
    if (inner)
        out_ += names;
    else
        Columns(true);
    out_ += select_.orderBy.empty() ? ", row_number() OVER (" : ", rank() OVER (";
    OrderBy(inner);
    out_ += ") AS place, count(*) OVER () AS total";
    if (inner) {
        out_ += " FROM (";
        Core(true);
        out_ += ')';
    } else {
        Rest();
    }
    out_ += ") WHERE ";
    if (select_.topPercent) {
        out_ += "(place - 1) * 100.0 < total * ";
        CheckedExpression part = *MakeConstant(Value::Double(select_.top), FieldType::Double);
        Expressions().Value(part);
    } else {
        out_ += "place <= " + std::to_string(static_cast<std::int64_t>(select_.top));
    }
    out_ += " ORDER BY place";
}

void SelectWriter::Limit() { out_ += " LIMIT " + std::to_string(static_cast<std::int64_t>(select_.top)); }

}  // namespace

void AppendSelect(SelectStack& stack, const CheckedSelect& select, std::string& out, bool namedColumns) {
    SelectWriter(stack, select, out).Write(namedColumns);
}

namespace {

/// Writes a statement on the one table of `action`.
class ActionWriter {
public:
    explicit ActionWriter(const CheckedAction& action) : action_(action), stack_{&action.rows} {}

    std::string Delete() {
        out_ = "DELETE FROM ";
        Target();
        Where();
        return out_;
    }

    std::string Update() {
        out_ = "UPDATE ";
        Target();
        const char* separator = " SET ";
        for (std::size_t i = 0; i < action_.columns.size(); ++i) {
            out_ += separator + ColumnAt(i) + " = ";
            SqliteExpression(stack_, out_).Value(*action_.rows.columns[i].expression);
            separator = ", ";
        }
        Where();
        return out_;
    }

    std::string Insert() {
        out_ = "INSERT INTO " + QuotedName(Table().table) + " (";
        for (std::size_t i = 0; i < action_.columns.size(); ++i) out_ += (i > 0 ? ", " : "") + ColumnAt(i);
        out_ += ") ";
        if (action_.select) return out_ += WriteSelect(*action_.select);
        out_ += "VALUES (";
        for (std::size_t i = 0; i < action_.values.size(); ++i) {
            if (i > 0) out_ += ", ";
            SqliteExpression(stack_, out_).Value(*action_.values[i]);
        }
        return out_ += ')';
    }

private:
    const CheckedSource& Table() const { return action_.rows.sources.front(); }
    std::string ColumnAt(std::size_t i) const {
        return QuotedName(Table().fields[static_cast<std::size_t>(action_.columns[i])].Name);
    }
    void Target() {
        out_ += QuotedName(Table().table);
        if (Table().name != Table().table) out_ += " AS " + QuotedName(Table().name);
    }
    void Where() {
        if (!action_.rows.where) return;
        out_ += " WHERE ";
        SqliteExpression(stack_, out_).Condition(*action_.rows.where);
    }

    const CheckedAction& action_;
    SelectStack stack_;
    std::string out_;
};

}  // namespace

std::string WriteDelete(const CheckedAction& action) { return ActionWriter(action).Delete(); }
std::string WriteInsert(const CheckedAction& action) { return ActionWriter(action).Insert(); }
std::string WriteUpdate(const CheckedAction& action) { return ActionWriter(action).Update(); }

std::string WriteSelect(const CheckedSelect& select) {
    SelectStack stack;
    std::string out;
    AppendSelect(stack, select, out);
    return out;
}

}  // namespace quillform::sql
