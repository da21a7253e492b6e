#include "data/jet/Header.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <string_view>

namespace quillform::jet {

namespace {

constexpr std::size_t maskStart = 0x18;
constexpr std::size_t versionAt = 0x14, columnMarkAt = 0x38, jet3SortAt = 0x3A, codePageAt = 0x3C, pageKeyAt = 0x3E;
constexpr std::size_t passwordAt = 0x42, jet3BuildAt = 0x56, jet4BuildAt = 0x6A, jet4SortAt = 0x6E;
constexpr std::size_t sortVersionAt = 0x71, createdAt = 0x72;

/// Bytes 0x18 and on of page 0 are combined with this fixed string.
constexpr std::array<std::uint8_t, 128> mask = {
    0xb5, 0x6f, 0x03, 0x62, 0x61, 0x08, 0xc2, 0x55, 0xeb, 0xa9, 0x67, 0x72, 0x43, 0x3f, 0x00, 0x9c, 0x7a, 0x9f, 0x90,
    0xff, 0x80, 0x9a, 0x31, 0xc5, 0x79, 0xba, 0xed, 0x30, 0xbc, 0xdf, 0xcc, 0x9d, 0x63, 0xd9, 0xe4, 0xc3, 0x7b, 0x42,
    0xfb, 0x8a, 0xbc, 0x4e, 0x86, 0xfb, 0xec, 0x37, 0x5d, 0x44, 0x9c, 0xfa, 0xc6, 0x5e, 0x28, 0xe6, 0x13, 0xb6, 0x8a,
    0x60, 0x54, 0x94, 0x7b, 0x36, 0xf5, 0x72, 0xdf, 0xb1, 0x77, 0xf4, 0x13, 0x43, 0xcf, 0xaf, 0xb1, 0x33, 0x34, 0x61,
    0x79, 0x5b, 0x92, 0xb5, 0x7c, 0x2a, 0x05, 0xf1, 0x7c, 0x99, 0x01, 0x1b, 0x98, 0xfd, 0x12, 0x4f, 0x4a, 0x94, 0x6c,
    0x3e, 0x60, 0x26, 0x5f, 0x95, 0xf8, 0xd0, 0x89, 0x24, 0x85, 0x67, 0xc6, 0x1f, 0x27, 0x44, 0xd2, 0xee, 0xcf, 0x65,
    0xed, 0xff, 0x07, 0xc7, 0x46, 0xa1, 0x78, 0x16, 0x0c, 0xed, 0xe9, 0x2d, 0x62, 0xd4};

void ApplyMask(std::uint8_t* page, const Layout& layout) {
    for (std::size_t i = 0; i < layout.maskedBytes; ++i) page[maskStart + i] ^= mask[i];
}

std::size_t PasswordBytes(Format format) { return format == Format::Jet3 ? 20 : 40; }

/// Jet 4 hides the password field once more, behind the whole days of the creation date.
void ApplyDateMask(std::uint8_t* page, double created) {
    std::array<std::uint8_t, 4> days{};
    const bool sane = std::isfinite(created) && std::abs(created) < 1e9;
    PutU32(days.data(), static_cast<std::uint32_t>(sane ? static_cast<std::int64_t>(created) : 0));
    for (std::size_t i = 0; i < PasswordBytes(Format::Jet4); ++i) page[passwordAt + i] ^= days[i % 4];
}

std::uint32_t AccountKey(const std::uint8_t* page) {
    std::uint32_t key = GetU32(page + createdAt);
    for (std::size_t i = 0; i < 28; ++i) key ^= static_cast<std::uint32_t>(page[passwordAt + 2 * i]) << (i % 24);
    return key;
}

[[noreturn]] void Refuse(const std::string& name, const std::string& why) {
    throw RunTimeError(ErrorNumber::UnrecognizedFormat, "\"" + name + "\" " + why);
}

[[noreturn]] void RefuseUnknown(Bytes start, const std::string& name) {
    constexpr std::size_t oldVersionAt = 0x40A;
    if (start.size() > oldVersionAt) {
        const char* old = nullptr;
        if (start[oldVersionAt] == 7) old = "1.0";
        if (start[oldVersionAt] == 8) old = "1.1";
        if (start[oldVersionAt] == 9) old = "2.0";
        if (old)
            Refuse(name, std::string("looks like a database of Access ") + old +
                             ", which is older than the formats that can be read (Access 95 to 2003).");
    }
    Refuse(name, "is not an Access database.");
}

void CheckVersion(Bytes start, const std::string& name) {
    const std::string_view title(reinterpret_cast<const char*>(start.data()) + 4, 15);
    if (title == "Standard ACE DB")
        Refuse(name,
               "is a database of Access 2007 or later (.accdb), which is newer than the formats that can be read "
               "(Access 95 to 2003); Access can save it as .mdb.");
    if (title == "MSISAM Database") Refuse(name, "is a Microsoft Money file, not an Access database.");
    if (title != "Standard Jet DB" || GetU32(start.data()) != 0x100) RefuseUnknown(start, name);
    if (start[versionAt] > 1)
        Refuse(name, "has the format version " + std::to_string(start[versionAt]) +
                         ", which is newer than the formats that can be read (Access 95 to 2003).");
}

}  // namespace

Header ReadHeader(Bytes start, const std::string& name) {
    if (start.empty()) Refuse(name, "is empty and not an Access database.");
    if (start.size() < 0x18) RefuseUnknown(start, name);
    CheckVersion(start, name);
    if (start.size() < headerBytes) Refuse(name, "is an Access database that ends in its first page.");
    std::array<std::uint8_t, headerBytes> page;
    std::memcpy(page.data(), start.data(), headerBytes);
    Header header;
    header.format = page[versionAt] == 0 ? Format::Jet3 : Format::Jet4;
    const bool jet3 = header.format == Format::Jet3;
    ApplyMask(page.data(), LayoutOf(header.format));
    header.columnMark = GetU16(&page[columnMarkAt]);
    header.sortOrder = GetU16(&page[jet3 ? jet3SortAt : jet4SortAt]);
    header.sortVersion = jet3 ? std::uint8_t{0} : page[sortVersionAt];
    header.codePage = GetU16(&page[codePageAt]);
    header.pageKey = GetU32(&page[pageKeyAt]);
    header.build = GetU16(&page[jet3 ? jet3BuildAt : jet4BuildAt]);
    if (!jet3) {
        header.created = std::bit_cast<double>(GetU64(&page[createdAt]));
        ApplyDateMask(page.data(), header.created);
        header.accountKey = AccountKey(page.data());
    }
    for (std::size_t i = 0; i < PasswordBytes(header.format); ++i)
        if (page[passwordAt + i] != 0) header.hasPassword = true;
    return header;
}

Header NewHeader(Format format, double created) {
    Header header;
    header.format = format;
    header.sortOrder = 0x0409;
    header.build = format == Format::Jet3 ? 3428 : 9756;
    header.created = created;
    return header;
}

std::string MakeHeaderPage(const Header& header) {
    const Layout& layout = LayoutOf(header.format);
    const bool jet3 = header.format == Format::Jet3;
    std::string text(layout.pageSize, '\0');
    auto* page = reinterpret_cast<std::uint8_t*>(text.data());
    PutU32(page, 0x100);
    std::memcpy(page + 4, "Standard Jet DB", 16);
    PutU32(page + versionAt, jet3 ? 0 : 1);
    PutU32(page + 0x18, globalMap);
    PutU32(page + 0x1C, globalMap + 1);
    for (std::uint32_t i = 0; i < 4; ++i) PutU32(page + 0x20 + 4 * i, objectsTable + i);
    PutU16(page + columnMarkAt, header.columnMark);
    PutU16(page + codePageAt, static_cast<std::size_t>(header.codePage));
    PutU16(page + (jet3 ? jet3SortAt : jet4SortAt), header.sortOrder);
    PutU16(page + (jet3 ? jet3BuildAt : jet4BuildAt), header.build);
    if (!jet3) {
        PutU64(page + createdAt, std::bit_cast<std::uint64_t>(header.created));
        PutU32(page + 0x98, 1620);
        std::memcpy(page + 0x9C, "4.0", 3);
        ApplyDateMask(page, header.created);
    }
    ApplyMask(page, layout);
    for (std::size_t at = layout.pageSize - 512; at < layout.pageSize; at += 2) page[at + 1] = 1;
    return text;
}

}  // namespace quillform::jet
