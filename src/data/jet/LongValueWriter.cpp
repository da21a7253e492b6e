#include "data/jet/LongValueWriter.h"

#include <algorithm>

#include "data/jet/DataPageEdit.h"

namespace quillform::jet {

namespace {

std::string Head(std::uint32_t length, RowPointer where) {
    std::array<std::uint8_t, longValueHead> head{};
    PutU32(head.data(), length);
    PutU32(head.data() + 4, where.value);
    return {reinterpret_cast<const char*>(head.data()), head.size()};
}

Bytes AsBytes(std::string_view text) { return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}; }

}  // namespace

std::string LongValueWriter::Write(std::string_view value, std::size_t inlineLimit) {
    if (value.size() > longValueLength)
        throw RunTimeError(ErrorNumber::ValueTooLong, "A value of more than a gigabyte can't be stored.");
    const auto length = static_cast<std::uint32_t>(value.size());
    if (value.size() <= inlineLimit) return Head(length | longValueInline, {}).append(value);
    const std::size_t most = file_.Form().maxLongPiece;
    if (value.size() <= most) return Head(length | longValueSingle, room_.Add(AsBytes(value), 0));
    // From the last piece to the first, so that each knows where the next one lies.
    RowPointer next{};
    std::string piece;
    for (std::size_t start = (value.size() - 1) / most * most;; start -= most) {
        piece.assign(4, '\0');
        PutU32(reinterpret_cast<std::uint8_t*>(piece.data()), next.value);
        piece.append(value.substr(start, most));
        next = room_.Add(AsBytes(piece), 0);
        if (start == 0) break;
    }
    return Head(length, next);
}

void LongValueWriter::Erase(Bytes stored) {
    if (stored.size() < longValueHead) return;
    const std::uint32_t head = GetU32(stored.data());
    if (head & longValueInline) return;
    RowPointer piece{GetU32(stored.data() + 4)};
    const bool isChain = (head & longValueSingle) == 0;
    FoundRow found;
    // Each erased piece is gone for good, so a chain that leads in a circle ends too.
    while (piece.value != 0 && FindRow(file_, piece, found)) {
        const RowPointer next{isChain && found.bytes.size() >= 4 ? GetU32(found.bytes.data()) : 0};
        const bool isLongValue = found.page.Owner() == longValueOwner;
        const RowPointer place = found.place;
        found = {};
        if (!isLongValue) return;
        DeleteRow(file_, place);
        room_.NoteRoom(place.Page());
        piece = next;
    }
}

}  // namespace quillform::jet
