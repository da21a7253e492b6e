#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace quillform::sqlite {

/// An open SQLite database. Failures of SQLite leave here as RunTimeError; an error that one of our own callbacks threw
/// is kept while SQLite unwinds, and leaves as itself.
class Connection {
public:
    enum class Mode { Memory, ReadOnly, ReadWrite, Create };

    /// `path` counts for nothing with Mode::Memory. FileMissing, NoPermission, UnrecognizedFormat, Locked.
    Connection(const std::string& path, Mode mode);
    Connection(Connection&&) = delete;

    sqlite3* Handle() const { return handle_.get(); }
    /// Runs statements that give no rows.
    void Execute(const std::string& statements);
    std::int64_t Changes() const { return sqlite3_changes64(Handle()); }
    std::int64_t LastRowId() const { return sqlite3_last_insert_rowid(Handle()); }

    /// For callbacks: keeps the exception in flight until the call into SQLite has returned.
    void KeepError() noexcept { pending_ = std::current_exception(); }
    /// Throws what a callback kept, else the connection's own error.
    [[noreturn]] void Fail(int code);

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
    };
    std::string path_;
    std::unique_ptr<sqlite3, Close> handle_;
    bool isOpen_ = false;
    std::exception_ptr pending_;
};

/// One prepared statement. Parameters and columns count from 0.
class Statement {
public:
    Statement(Connection& connection, std::string_view text);

    bool Step();  ///< false behind the last row
    void Reset() { sqlite3_reset(handle_.get()); }

    /// Texts and bytes are copied.
    void Bind(int parameter, const ValueView& value);
    void BindWhole(int parameter, std::int64_t number);

    int Columns() const { return sqlite3_column_count(handle_.get()); }
    bool IsNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }
    int Type(int column) const { return sqlite3_column_type(handle_.get(), column); }
    std::int64_t Whole(int column) const { return sqlite3_column_int64(handle_.get(), column); }
    double Real(int column) const { return sqlite3_column_double(handle_.get(), column); }
    /// Valid until the next Step or Reset.
    std::string_view Text(int column) const;
    std::string_view Bytes(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    Connection& connection_;
    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// Name in double quotes.
std::string Quoted(std::string_view name);

}  // namespace quillform::sqlite
