#include "data/sqlite/StatementRunner.h"

#include <cmath>
#include <set>

#include "data/sqlite/Connection.h"
#include "data/sqlite/Functions.h"
#include "data/sqlite/VirtualTable.h"

namespace quillform::sqlite {

struct StatementRunner::Session {
    Session(data::TableCache& cache, const Clock& clock)
        : connection({}, Connection::Mode::Memory), module{connection, cache, clock} {
        AddFunctions(connection, clock);
        AddTableModule(module);
    }
    Connection connection;
    TableModule module;
    std::set<std::size_t> declared;
};

StatementRunner::StatementRunner(data::TableCache& cache, const Clock& clock) : cache_(cache), clock_(clock) {}
StatementRunner::~StatementRunner() = default;

void StatementRunner::ForgetTables() { session_.reset(); }

StatementRunner::Session& StatementRunner::Ready(const sql::PreparedStatement& statement) {
    if (const std::uint64_t tables = cache_.Stored().TablesChangeCount(); tables != tablesSeen_) {
        session_.reset();  // it knows tables by their positions
        tablesSeen_ = tables;
    }
    if (!session_) session_ = std::make_unique<Session>(cache_, clock_);
    const auto declare = [&](std::size_t table) {
        if (session_->declared.insert(table).second) DeclareTable(session_->module, table);
    };
    for (const std::size_t table : statement.tables) declare(table);
    if (statement.kind != sql::StatementKind::Select) declare(statement.target);
    return *session_;
}

namespace {

/// A result of SQLite as a value of the kind that the checker found for the column.
ValueView ViewAs(const Statement& rows, int column, ValueKind kind) {
    ValueView view;
    const int type = rows.Type(column);
    if (type == SQLITE_NULL) return view;
    view.kind = kind;
    switch (kind) {
        case ValueKind::Boolean:
            view.integer = rows.Real(column) != 0 ? 1 : 0;
            break;
        case ValueKind::Integer:
            view.integer = type == SQLITE_FLOAT ? std::llround(rows.Real(column)) : rows.Whole(column);
            break;
        case ValueKind::Currency:
            view.integer = std::llround(rows.Real(column) * 10000);
            break;
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            view.real = rows.Real(column);
            break;
        case ValueKind::Decimal:
            // The column builder takes a number's general text for the digits.
            view.kind = ValueKind::Double;
            view.real = rows.Real(column);
            break;
        case ValueKind::Null:
        case ValueKind::Text:
        case ValueKind::Guid:
            if (type == SQLITE_TEXT || type == SQLITE_BLOB) {
                view.text = rows.Text(column);
            } else {
                view.kind = type == SQLITE_INTEGER ? ValueKind::Integer : ValueKind::Double;
                view.integer = rows.Whole(column);
                view.real = rows.Real(column);
            }
            break;
        case ValueKind::Binary:
            view.text = rows.Bytes(column);
            break;
    }
    return view;
}

}  // namespace

data::Result StatementRunner::Select(const sql::PreparedStatement& statement) {
    Statement rows(Ready(statement).connection, statement.sqlite);
    std::vector<data::ColumnBuilder> builders;
    for (const Field& field : statement.columns) builders.emplace_back(data::KindOf(field.Type), cache_.Store());
    data::Result result;
    while (rows.Step()) {
        for (std::size_t i = 0; i < builders.size(); ++i)
            builders[i].Append(ViewAs(rows, static_cast<int>(i), data::KindOf(statement.columns[i].Type)));
        if (++result.count >= data::noRow)
            throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement gives too many rows.");
    }
    for (data::ColumnBuilder& builder : builders) result.columns.push_back({builder.Finish(), -1});
    return result;
}

std::vector<data::RowId> StatementRunner::SelectRowIds(sql::PreparedStatement criteria, std::size_t table) {
    criteria.tables.assign(1, table);  // the checker knew this one table only
    Statement rows(Ready(criteria).connection, criteria.sqlite);
    std::vector<data::RowId> ids;
    while (rows.Step()) ids.push_back(rows.Whole(0));
    return ids;
}

std::int64_t StatementRunner::Execute(const sql::PreparedStatement& statement) {
    Connection& connection = Ready(statement).connection;
    Statement run(connection, statement.sqlite);
    data::Storage& storage = cache_.Stored();
    storage.Begin();
    try {
        while (run.Step()) {
        }
        run.Reset();  // ends the statement before its rows are committed
        storage.Commit();
    } catch (...) {
        run.Reset();
        storage.Rollback();
        cache_.Clear();
        throw;
    }
    cache_.Clear();
    return connection.Changes();
}

}  // namespace quillform::sqlite
