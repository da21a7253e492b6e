#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillform {

/// One entry of the error log as bytes: five lines, each ended by a carriage return and a line feed, in Windows 1252.
/// `when` is a serial. Line ends inside a text become blanks, so that an entry is always five lines.
std::string LogEntry(std::string_view strWhere, std::string_view strName, int number, double when);

/// Adds bytes to the end of a file, which is made if it isn't there. While they are written no other process or thread
/// can write to the file in this way. They are added whole or not at all.
/// RunTimeError PermissionDenied at once if another writer has the file; FileNotFound if its folder doesn't exist;
/// DiskFull, DeviceIo.
void AppendLocked(const std::filesystem::path& path, std::string_view bytes);

}  // namespace quillform
