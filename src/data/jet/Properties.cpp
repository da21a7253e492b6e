#include "data/jet/Properties.h"

#include <algorithm>

#include "data/jet/TableDefinition.h"
#include "data/jet/TextCodec.h"
#include "platform/CodePage.h"

namespace quillform::jet {

namespace {

constexpr std::uint16_t namesBlock = 0x80, columnBlock = 0x01;
constexpr std::size_t blockHead = 6;

std::string TextOf(Bytes bytes, Format format, int codePage) {
    std::string buffer;
    if (format == Format::Jet3) return std::string(DecodeJet3Text(bytes, codePage, buffer));
    AppendUtf16(bytes, buffer);
    return buffer;
}

/// A text behind its 2-byte length; false if it doesn't fit.
bool TakeText(Bytes& bytes, Format format, int codePage, std::string& text) {
    if (bytes.size() < 2) return false;
    const std::size_t length = GetU16(bytes.data());
    if (length > bytes.size() - 2) return false;
    text = TextOf(bytes.subspan(2, length), format, codePage);
    bytes = bytes.subspan(2 + length);
    return true;
}

void ReadColumnBlock(Bytes block, const std::vector<std::string>& names, Format format, int codePage,
                     std::vector<ColumnProperties>& found) {
    constexpr std::size_t valueHead = 8;
    if (block.size() < 4) return;
    const std::size_t nameLength = GetU32(block.data());
    if (nameLength < 4 || nameLength > block.size()) return;
    Bytes namePart = block.subspan(4, nameLength - 4);
    ColumnProperties column;
    if (!TakeText(namePart, format, codePage, column.column)) return;
    for (Bytes values = block.subspan(nameLength); values.size() >= valueHead;) {
        const std::size_t length = GetU16(values.data());
        if (length < valueHead || length > values.size()) return;
        const std::size_t name = GetU16(&values[4]);
        const bool isTrue = length > valueHead && values[valueHead] != 0;
        if (name < names.size() && names[name] == "Required") column.required = isTrue;
        values = values.subspan(length);
    }
    found.push_back(std::move(column));
}

void AppendU16(std::string& out, std::size_t value) {
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>(value >> 8 & 0xFF));
}

void AppendU32(std::string& out, std::size_t value) {
    AppendU16(out, value & 0xFFFF);
    AppendU16(out, value >> 16);
}

std::string LengthAndText(std::string_view text, Format format, int codePage) {
    const std::string stored = format == Format::Jet3 ? CodePageFromUtf8(text, codePage) : Utf16LeFromUtf8(text);
    std::string out;
    AppendU16(out, stored.size());
    return out + stored;
}

void AppendBlock(std::string& out, std::uint16_t type, const std::string& content) {
    AppendU32(out, blockHead + content.size());
    AppendU16(out, type);
    out += content;
}

}  // namespace

std::vector<ColumnProperties> ReadProperties(Bytes stored, Format format, int codePage) {
    std::vector<ColumnProperties> found;
    if (stored.size() < 4) return found;
    std::vector<std::string> names;
    for (Bytes rest = stored.subspan(4); rest.size() >= blockHead;) {
        const std::size_t length = GetU32(rest.data());
        if (length < blockHead || length > rest.size()) break;
        const std::uint16_t type = GetU16(&rest[4]);
        Bytes content = rest.subspan(blockHead, length - blockHead);
        std::string name;
        if (type == namesBlock)
            while (TakeText(content, format, codePage, name)) names.push_back(name);
        if (type == columnBlock) ReadColumnBlock(content, names, format, codePage, found);
        rest = rest.subspan(length);
    }
    return found;
}

std::string WriteProperties(const std::vector<ColumnProperties>& columns, Format format, int codePage) {
    std::string out(format == Format::Jet3 ? "KKD\0" : "MR2\0", 4);
    AppendBlock(out, namesBlock, LengthAndText("Required", format, codePage));
    bool any = false;
    for (const ColumnProperties& column : columns) {
        if (!column.required) continue;
        any = true;
        const std::string name = LengthAndText(column.column, format, codePage);
        std::string content;
        AppendU32(content, 4 + name.size());
        content += name;
        AppendU16(content, 9);  // this value, whole
        content.push_back(1);   // set by the definition of the table
        content.push_back(static_cast<char>(ColumnType::Boolean));
        AppendU16(content, 0);  // the first name
        AppendU16(content, 1);
        content.push_back(static_cast<char>(0xFF));
        AppendBlock(out, columnBlock, content);
    }
    return any ? out : std::string();
}

}  // namespace quillform::jet
