#include "data/jet/TextCodec.h"

#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform::jet {

namespace {

bool IsPlain(Bytes bytes) {
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, bytes.data() + i, 8);
        if (eight & 0x8080808080808080u) return false;
        if ((eight - 0x0101010101010101u) & ~eight & 0x8080808080808080u) return false;  // a zero byte among them
    }
    for (; i < bytes.size(); ++i)
        if (bytes[i] == 0 || bytes[i] >= 0x80) return false;
    return true;
}

std::string_view AsText(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

bool IsHigh(std::uint32_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLow(std::uint32_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// One-byte and two-byte stretches take turns; a zero byte switches, wherever it stands.
void AppendCompressed(Bytes stored, std::string& out) {
    bool isWide = false;
    std::size_t at = 0;
    while (at < stored.size()) {
        std::size_t end = at;
        while (end < stored.size() && stored[end] != 0) ++end;
        if (isWide)
            AppendUtf16(stored.subspan(at, end - at), out);
        else
            for (std::size_t i = at; i < end; ++i) AppendCodePoint(stored[i], out);
        isWide = !isWide;
        at = end + 1;
    }
}

}  // namespace

void AppendUtf16(Bytes stored, std::string& out) {
    const std::size_t end = stored.size() & ~std::size_t{1};
    for (std::size_t i = 0; i < end; i += 2) {
        const std::uint32_t unit = GetU16(&stored[i]);
        if (unit < 0x80) {
            out.push_back(static_cast<char>(unit));
        } else if (IsHigh(unit) && i + 4 <= end && IsLow(GetU16(&stored[i + 2]))) {
            AppendCodePoint(0x10000 + ((unit & 0x3FF) << 10 | (GetU16(&stored[i + 2]) & 0x3FFu)), out);
            i += 2;
        } else {
            AppendCodePoint(IsHigh(unit) || IsLow(unit) ? 0xFFFD : unit, out);
        }
    }
}

std::string_view DecodeJet4Text(Bytes stored, std::string& buffer) {
    if (stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE) {
        stored = stored.subspan(2);
        if (IsPlain(stored)) return AsText(stored);
        buffer.clear();
        AppendCompressed(stored, buffer);
    } else {
        buffer.clear();
        AppendUtf16(stored, buffer);
    }
    return buffer;
}

std::string_view DecodeJet3Text(Bytes stored, int codePage, std::string& buffer) {
    if (IsPlain(stored)) return AsText(stored);
    buffer = Utf8FromCodePage(AsText(stored), codePage);
    return buffer;
}

namespace {

std::string NarrowBytes(std::u16string_view units) {
    std::string out = "\xFF\xFE";
    for (const char16_t unit : units) out.push_back(static_cast<char>(unit));
    return out;
}

std::string WideBytes(std::u16string_view units) {
    std::string out;
    out.reserve(2 * units.size());
    for (const char16_t unit : units) {
        out.push_back(static_cast<char>(unit & 0xFF));
        out.push_back(static_cast<char>(unit >> 8));
    }
    return out;
}

/// The compressed form with switches of mode; nothing where a unit has a zero byte that would be taken for a switch.
std::string SwitchedBytes(std::u16string_view units) {
    std::string out = "\xFF\xFE";
    bool isWide = false;
    for (const char16_t unit : units) {
        const bool needsWide = unit > 0xFF;
        if (unit == 0 || (needsWide && (unit & 0xFF) == 0)) return {};
        if (needsWide != isWide) out.push_back('\0');
        isWide = needsWide;
        out.push_back(static_cast<char>(unit & 0xFF));
        if (needsWide) out.push_back(static_cast<char>(unit >> 8));
    }
    return out;
}

}  // namespace

std::string Utf16LeFromUtf8(std::string_view text) { return WideBytes(Utf16FromUtf8(text)); }

std::size_t CountUtf16Units(std::string_view text) {
    std::size_t units = 0;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

std::string EncodeJet4Text(std::string_view text, bool mayCompress) {
    constexpr std::size_t shortest = 3, longest = 1024;  // characters that the engine compresses
    constexpr char16_t compressedMark = 0xFEFF;
    const bool hasLength = text.size() >= shortest && text.size() <= longest;
    if (mayCompress && hasLength && IsPlain({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}))
        return std::string("\xFF\xFE").append(text);
    const std::u16string converted = Utf16FromUtf8(text);
    std::u16string_view units = converted;
    bool fits = mayCompress && units.size() >= shortest && units.size() <= longest;
    for (const char16_t unit : units) fits = fits && unit >= 1 && unit <= 0xFF;
    if (fits) return NarrowBytes(units);
    if (units.empty() || units[0] != compressedMark) return WideBytes(units);
    // Stored as it is, this text would read as a compressed one.
    if (std::string switched = SwitchedBytes(units); !switched.empty()) return switched;
    while (!units.empty() && units[0] == compressedMark) units.remove_prefix(1);
    return WideBytes(units);
}

}  // namespace quillform::jet
