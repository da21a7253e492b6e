#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/RunTimeError.h"

namespace quillform::cli {

/// What is wrong with a path under which no file was found, as the end of a sentence: "is a folder", "does not exist".
std::string WhyNoFile(const std::string& name);

/// Finds a file that a verb reads, by a path as layouts hold them. RunTimeError `missing` with a sentence about "The
/// KIND".
std::filesystem::path ExistingFile(std::string_view kind, const std::string& name, ErrorNumber missing);

/// RunTimeError PermissionDenied if `target` is the file `input`, by whatever name or link: nothing may take the place
/// of what it is made from.
void ExpectOtherFile(const std::filesystem::path& target, const std::filesystem::path& input);

}  // namespace quillform::cli
