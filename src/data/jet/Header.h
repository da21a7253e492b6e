#pragma once

#include <cstdint>
#include <string>

#include "data/jet/Bytes.h"
#include "data/jet/Layout.h"

namespace quillform::jet {

/// What page 0 says. docs/mdb-format.md, "Page 0".
struct Header {
    Format format = Format::Jet4;
    int codePage = 1252;
    std::uint16_t sortOrder = 0;  ///< LCID of new text columns
    std::uint8_t sortVersion = 0;
    std::uint16_t build = 0;       ///< of the engine that made the file
    std::uint16_t columnMark = 0;  ///< Jet 3: what every column descriptor repeats
    std::uint32_t pageKey = 0;     ///< 0: pages are plain
    double created = 0;            ///< Jet 4: days since 1899-12-30
    bool hasPassword = false;
    std::uint32_t accountKey = 0;  ///< Jet 4: key of the account numbers in the system tables
};

inline constexpr std::size_t headerBytes = 0xA0;  ///< of page 0 that the header needs

/// Reads the first bytes of a file. UnrecognizedFormat names what the file is instead, PasswordRequired where it has
/// one. `name` is how messages call the file.
Header ReadHeader(Bytes start, const std::string& name);

/// The whole page 0 of a new file.
std::string MakeHeaderPage(const Header& header);
/// The header of a new file that is made at `created`.
Header NewHeader(Format format, double created);

}  // namespace quillform::jet
