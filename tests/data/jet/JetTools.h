#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "data/OtherProcess.h"
#include "data/Storage.h"
#include "data/jet/JetStorage.h"
#include "platform/RunTimeError.h"

namespace quillform::test {

std::string Content(const std::filesystem::path& path);
void WriteContent(const std::filesystem::path& path, const std::string& content);
/// A copy of a sample database that can be written to.
void CopySample(std::string_view name, const std::filesystem::path& to);

/// Number of the error that an action ends in; 0 if it ends well. The error must be one whole sentence.
ErrorNumber NumberOf(const std::function<void()>& action, std::string* message = nullptr);

/// What a command writes, errors included.
std::string OutputOf(const std::string& command);
/// Whether the independent reader of databases is installed.
bool HasMdbExport();
std::string Quoted(const std::filesystem::path& path);

data::StoredTable& Table(data::Storage& storage, std::string_view name);
Field Column(std::string name, FieldType type, int size = 0);
IndexDef PrimaryKey(const char* column);

inline std::string NameOfFormat(const ::testing::TestParamInfo<jet::Format>& format) {
    return format.param == jet::Format::Jet3 ? "Jet3" : "Jet4";
}

/// "T": a counting Id as primary key, and a text.
TableDef SmallTable();
/// In one transaction.
void InsertRows(data::Storage& storage, int count);
std::size_t CountRows(const std::filesystem::path& path);
/// A database with "T" and 100 rows.
void MakeSmall(const std::filesystem::path& path);

}  // namespace quillform::test
