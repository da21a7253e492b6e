#pragma once

#include <filesystem>
#include <memory>

#include "data/Storage.h"
#include "platform/Clock.h"

namespace quillform::sqlite {

/// SQLite files as storage. Columns get the type that their declaration names:
///
/// | declared type contains                  | type                                                              |
/// |-----------------------------------------|-------------------------------------------------------------------|
/// | BOOL                                    | Boolean                                                           |
/// | DATE, TIME                              | Date                                                              |
/// | CURRENCY, MONEY                         | Currency                                                          |
/// | BYTE, TINYINT / SMALLINT, INT2 / INT    | Byte / Integer / Long; wider numbers are read whole all the same  |
/// | SINGLE / REAL, FLOA, DOUB, NUM          | Single / Double                                                   |
/// | DECIMAL(p,s)                            | Decimal; Double without the parentheses                           |
/// | GUID                                    | Guid                                                              |
/// | LONGTEXT, CLOB, MEMO                    | Memo                                                              |
/// | CHAR(n), TEXT                           | Text of n or 255 characters, Memo above 255; longer texts are read|
/// | BLOB(n), BINARY(n) / BLOB               | Binary / OLE object                                               |
/// | nothing                                 | what the first row that isn't Null holds                          |
///
/// A value that doesn't read as its column's type is Null. Dates are texts ("2024-05-31 10:30:00", or what CDate
/// reads), Unix seconds or milliseconds (whole numbers beyond 5,373,484), Julian days (1,721,425 to 5,373,484) or
/// serials (other numbers); they are written as texts. Tables without row ids can only be read. Views aren't tables.

/// Whether the file begins as a SQLite database does.
bool LooksLikeSqlite(const std::filesystem::path& path);

/// `clock` completes dates without a year and outlives the storage.
std::shared_ptr<data::Storage> OpenStorage(const std::filesystem::path& path, Access access, const Clock& clock);

/// Makes an empty database file and opens it. PermissionDenied if the file exists.
std::shared_ptr<data::Storage> CreateStorage(const std::filesystem::path& path, const Clock& clock);

}  // namespace quillform::sqlite
