#pragma once

#include <string>

#include "data/jet/DataPage.h"

namespace quillform::jet {

inline constexpr std::size_t longValueHead = 12;  ///< bytes in the row before an inline value
inline constexpr std::uint32_t longValueLength = 0x3FFFFFFF, longValueInline = 0x80000000, longValueSingle = 0x40000000;

/// The bytes of a memo or OLE value by what the row stores of it. They lie in the row, in the page that `pin` then
/// holds, or in `buffer`.
Bytes ReadLongValue(const PageFile& file, Bytes stored, PageRef& pin, std::string& buffer);

}  // namespace quillform::jet
