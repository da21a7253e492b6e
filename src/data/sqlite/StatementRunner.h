#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "data/columns/Result.h"
#include "data/columns/TableCache.h"
#include "data/sql/Prepare.h"
#include "platform/Clock.h"

namespace quillform::sqlite {

/// Runs prepared statements over the tables of one storage by SQLite, of which each storage has one connection in
/// memory that sees its tables as virtual tables.
class StatementRunner {
public:
    /// Both outlive the runner.
    StatementRunner(data::TableCache& cache, const Clock& clock);
    ~StatementRunner();

    /// Runs a Select to its end. Plain result columns keep the kind of their field.
    data::Result Select(const sql::PreparedStatement& statement);
    /// The rows that a criteria over the storage's table chooses.
    std::vector<data::RowId> SelectRowIds(sql::PreparedStatement criteria, std::size_t table);
    /// Runs a Delete, Insert or Update, whole or not at all; gives the number of rows.
    std::int64_t Execute(const sql::PreparedStatement& statement);
    /// After a table was made or dropped.
    void ForgetTables();

private:
    struct Session;
    Session& Ready(const sql::PreparedStatement& statement);

    data::TableCache& cache_;
    const Clock& clock_;
    std::uint64_t tablesSeen_ = 0;
    std::unique_ptr<Session> session_;
};

}  // namespace quillform::sqlite
