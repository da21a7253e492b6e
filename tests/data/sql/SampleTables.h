#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "data/sql/Prepare.h"

namespace quillform::sql {

constexpr int sampleYear = 2024;

/// Orders, Customers, Lines, Report - Index, all with a few rows in the database below, and Far, a linked table.
const Schema& SampleTables();

/// The sample tables as plain SQLite tables with the collation, but without the dialect's functions.
class SampleDatabase {
public:
    SampleDatabase();
    /// Rows as texts joined by ","; Null as "-".
    std::vector<std::string> Rows(const std::string& sqlite);
    void Run(const std::string& sqlite);

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace quillform::sql
