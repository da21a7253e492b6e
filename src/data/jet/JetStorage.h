#pragma once

#include <filesystem>
#include <memory>

#include "data/Storage.h"

namespace quillform::jet {

enum class Format { Jet3, Jet4 };

/// Whether the file begins like a Jet database of any version (so that the error names the version, not the format).
bool LooksLikeJet(const std::filesystem::path& path);

/// Opens an existing file. Opening it twice in one process gives the same storage, which can be written to as soon as
/// one of those who opened it asked for that. FileMissing, UnrecognizedFormat (with the reason: too new, too old,
/// truncated, not a database), PasswordRequired, Locked, NoPermission.
std::shared_ptr<data::Storage> Open(const std::filesystem::path& path, Access access);

/// Makes an empty database file, with its system tables, and opens it. Fails if the file exists.
std::shared_ptr<data::Storage> Create(const std::filesystem::path& path, Format format);

}  // namespace quillform::jet
