#include "data/sqlite/Connection.h"

#include <filesystem>
#include <utility>

#include "platform/RunTimeError.h"

namespace quillform::sqlite {
namespace {

int OpenFlags(Connection::Mode mode) {
    switch (mode) {
        case Connection::Mode::Memory:
            return SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY;
        case Connection::Mode::ReadOnly:
            return SQLITE_OPEN_READONLY;
        case Connection::Mode::ReadWrite:
            return SQLITE_OPEN_READWRITE;
        case Connection::Mode::Create:
            return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    }
    return SQLITE_OPEN_READONLY;
}

ErrorNumber NumberFor(int code) {
    switch (code) {
        case SQLITE_CONSTRAINT_NOTNULL:
            return ErrorNumber::FieldRequired;
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_ROWID:
            return ErrorNumber::DuplicateKey;
        default:
            break;
    }
    switch (code & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return ErrorNumber::Locked;
        case SQLITE_READONLY:
            return ErrorNumber::ReadOnly;
        case SQLITE_CONSTRAINT:  // a rule of the table's own: a check, a foreign key, a trigger
            return ErrorNumber::InvalidArgument;
        case SQLITE_FULL:
            return ErrorNumber::DiskFull;
        case SQLITE_IOERR:
            return ErrorNumber::DeviceIo;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return ErrorNumber::UnrecognizedFormat;
        case SQLITE_CANTOPEN:  // the file was seen to be there
            return ErrorNumber::NoPermission;
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return ErrorNumber::NoPermission;
        case SQLITE_NOMEM:
            return ErrorNumber::OutOfMemory;
        case SQLITE_TOOBIG:
            return ErrorNumber::ValueTooLong;
        case SQLITE_MISMATCH:
            return ErrorNumber::DataTypeMismatch;
        default:
            return ErrorNumber::SyntaxError;
    }
}

}  // namespace

Connection::Connection(const std::string& path, Mode mode) : path_(mode == Mode::Memory ? ":memory:" : path) {
    if ((mode == Mode::ReadOnly || mode == Mode::ReadWrite) && !std::filesystem::exists(path))
        throw RunTimeError(ErrorNumber::FileMissing, "Could not find file \"" + path + "\".");
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path_.c_str(), &opened, OpenFlags(mode) | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) Fail(code);
    isOpen_ = true;
    sqlite3_extended_result_codes(opened, 1);
    sqlite3_busy_timeout(opened, 2000);
}

void Connection::Execute(const std::string& statements) {
    const int code = sqlite3_exec(Handle(), statements.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) Fail(code);
}

void Connection::Fail(int code) {
    if (pending_) std::rethrow_exception(std::exchange(pending_, nullptr));
    if (isOpen_ && (code & 0xFF) == SQLITE_CANTOPEN)
        throw RunTimeError(ErrorNumber::ReadOnly,
                           "\"" + path_ + "\" can't be changed: no file can be made in its folder.");
    const std::string reason = handle_ ? sqlite3_errmsg(Handle()) : sqlite3_errstr(code);
    const std::string where = path_ == ":memory:" ? "The statement failed" : "Database \"" + path_ + "\" failed";
    throw RunTimeError(NumberFor(code), where + ": " + reason + ".");
}

Statement::Statement(Connection& connection, std::string_view text) : connection_(connection) {
    sqlite3_stmt* prepared = nullptr;
    const int code =
        sqlite3_prepare_v2(connection.Handle(), text.data(), static_cast<int>(text.size()), &prepared, nullptr);
    handle_.reset(prepared);
    if (code != SQLITE_OK) connection.Fail(code);
}

bool Statement::Step() {
    const int code = sqlite3_step(handle_.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    connection_.Fail(code);
}

void Statement::BindWhole(int parameter, std::int64_t number) {
    sqlite3_bind_int64(handle_.get(), parameter + 1, number);
}

void Statement::Bind(int parameter, const ValueView& value) {
    sqlite3_stmt* statement = handle_.get();
    const int place = parameter + 1;
    switch (value.kind) {
        case ValueKind::Null:
            sqlite3_bind_null(statement, place);
            break;
        case ValueKind::Boolean:
        case ValueKind::Integer:
            sqlite3_bind_int64(statement, place, value.integer);
            break;
        case ValueKind::Currency:
            sqlite3_bind_double(statement, place, static_cast<double>(value.integer) / 10000);
            break;
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            sqlite3_bind_double(statement, place, value.real);
            break;
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Guid:
            sqlite3_bind_text64(statement, place, value.text.data() ? value.text.data() : "", value.text.size(),
                                SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        case ValueKind::Binary:
            sqlite3_bind_blob64(statement, place, value.text.data() ? value.text.data() : "", value.text.size(),
                                SQLITE_TRANSIENT);
            break;
    }
}

std::string_view Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

std::string_view Statement::Bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(handle_.get(), column));
    return {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

}  // namespace quillform::sqlite
