#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "model/DataAccess.h"
#include "platform/OutputFile.h"

namespace quillform::cli {

/// Values as machines read them: numbers with all their digits and a point, dates as "1998-12-31" or
/// "1998-12-31 23:59:00" and pure times as "23:59:00" (a date that no calendar has as its number of days), Booleans as
/// True and False, bytes as hexadecimal digits.
void AppendMachineText(const ValueView& value, std::string& out);

/// One value as JSON: numbers and Booleans bare, Null as null, anything else as a text.
void AppendJson(const ValueView& value, std::string& out);
void AppendJsonText(std::string_view text, std::string& out);

enum class RowFormat { Csv, CsvWithoutHeader, Json };

/// Writes all rows of a record set from its current one on: CSV by RFC 4180 (comma, quotes where they are needed, lines
/// that end in carriage return and line feed; Null is an empty field, an empty text a quoted one), or a JSON array of
/// objects. `isStopped` is asked every few thousand rows; false if it stopped the writing.
bool WriteRows(Recordset& records, RowFormat format, OutputFile& out, bool (*isStopped)());

}  // namespace quillform::cli
