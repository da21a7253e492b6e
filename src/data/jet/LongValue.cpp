#include "data/jet/LongValue.h"

#include <algorithm>

namespace quillform::jet {

namespace {

Bytes ReadChain(const PageFile& file, RowPointer piece, std::size_t length, std::string& buffer) {
    // A chain is no longer than the file; a circle that adds nothing must end too.
    if (length > static_cast<std::uint64_t>(file.PageCount()) * file.Form().pageSize)
        Damaged("a long value claims to be longer than the file");
    buffer.clear();
    FoundRow found;
    while (buffer.size() < length && piece.value != 0) {
        if (!FindRow(file, piece, found)) Damaged("a piece of a long value is missing");
        if (found.bytes.size() <= 4) Damaged("a piece of a long value is empty");
        piece.value = GetU32(found.bytes.data());
        const Bytes data = found.bytes.subspan(4);
        buffer.append(reinterpret_cast<const char*>(data.data()), std::min(data.size(), length - buffer.size()));
    }
    return {reinterpret_cast<const std::uint8_t*>(buffer.data()), buffer.size()};
}

}  // namespace

Bytes ReadLongValue(const PageFile& file, Bytes stored, PageRef& pin, std::string& buffer) {
    if (stored.empty()) return {};
    if (stored.size() < longValueHead) Damaged("the head of a long value is cut off");
    const std::uint32_t head = GetU32(stored.data());
    const std::size_t length = head & longValueLength;
    const RowPointer where{GetU32(stored.data() + 4)};
    if (head & longValueInline) {
        const Bytes inRow = stored.subspan(longValueHead);
        return inRow.first(std::min(length, inRow.size()));
    }
    if (!(head & longValueSingle)) return ReadChain(file, where, length, buffer);
    FoundRow found;
    if (!FindRow(file, where, found)) Damaged("a long value is missing");
    pin = found.page.Pin();
    return found.bytes.first(std::min(length, found.bytes.size()));
}

}  // namespace quillform::jet
