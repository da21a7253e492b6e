#include "platform/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/AsciiRun.h"
#include "platform/Text.h"

namespace quillform {
namespace {

/// Code points of the bytes 80 to 9F in Windows code page 1252, as Microsoft publishes it; every other byte is its own.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

/// Name of a Windows code page as iconv knows it.
std::string IconvName(int codePage) {
    if (codePage >= 28591 && codePage <= 28606) return "ISO-8859-" + std::to_string(codePage - 28590);
    switch (codePage) {
        case 65001:
            return "UTF-8";
        case 20127:
            return "ASCII";
        case 20866:
            return "KOI8-R";
        case 21866:
            return "KOI8-U";
        case 10000:
            return "MACINTOSH";
        case 1361:
            return "JOHAB";
        default:
            return "CP" + std::to_string(codePage);
    }
}

/// One direction of iconv. `Opened` is false for a code page that the system doesn't have.
class Converter {
public:
    Converter(const std::string& to, const std::string& from) : handle_(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (Opened()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool Opened() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Converts `input`, appends to `out`, and hands each rest that can't be converted, and whether it is only
    /// incomplete, to `skip`, which appends a replacement and returns the number of bytes to step over.
    template <typename Skip>
    void Convert(std::string_view input, std::string& out, Skip skip) {
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        char* from = const_cast<char*>(input.data());  // iconv doesn't write to its input
        std::size_t left = input.size();
        while (left > 0) {
            if (const int error = Step(&from, &left, out); error != 0) {
                const std::size_t step = skip(input.substr(input.size() - left), error == EINVAL);
                from += step;
                left -= step;
            }
        }
        Step(nullptr, nullptr, out);
    }

private:
    /// Converts as far as it goes, or writes what is held back if there is no input. Returns the error that stopped it.
    int Step(char** from, std::size_t* left, std::string& out) {
        std::array<char, 1024> chunk;
        char* to = chunk.data();
        std::size_t room = chunk.size();
        int error = iconv(handle_, from, left, &to, &room) == static_cast<std::size_t>(-1) ? errno : 0;
        if (error == EILSEQ || error == EINVAL) iconv(handle_, nullptr, nullptr, &to, &room);
        out.append(chunk.data(), static_cast<std::size_t>(to - chunk.data()));
        return error == E2BIG ? 0 : error;
    }

    iconv_t handle_;
};

/// A code page of one byte for each character, as two tables. Converting byte by byte also keeps the marks of the
/// Hebrew and the Vietnamese page apart from their letters, which iconv would melt into one character.
class ByteTable {
public:
    /// Fills the tables; false if the page has characters of several bytes.
    bool Load(Converter& converter) {
        for (std::size_t byte = 0; byte < toUnicode_.size(); ++byte) {
            const char c = static_cast<char>(byte);
            std::string text;
            bool whole = true;
            converter.Convert({&c, 1}, text, [&](std::string_view, bool incomplete) {
                whole = !incomplete;
                AppendCodePoint(static_cast<char32_t>(byte), text);
                return std::size_t{1};
            });
            if (!whole || text.empty()) return false;
            std::size_t at = 0;
            toUnicode_[byte] = NextCodePoint(text, at);
            fromUnicode_.emplace_back(toUnicode_[byte], c);
        }
        std::stable_sort(fromUnicode_.begin(), fromUnicode_.end(),
                         [](const auto& left, const auto& right) { return left.first < right.first; });
        return true;
    }

    char32_t CodePointOf(char byte) const { return toUnicode_[static_cast<unsigned char>(byte)]; }
    std::optional<char> ByteOf(char32_t codePoint) const {
        const auto found = std::lower_bound(fromUnicode_.begin(), fromUnicode_.end(), codePoint,
                                            [](const auto& entry, char32_t wanted) { return entry.first < wanted; });
        return found != fromUnicode_.end() && found->first == codePoint ? std::optional(found->second) : std::nullopt;
    }

private:
    std::array<char32_t, 256> toUnicode_{};
    std::vector<std::pair<char32_t, char>> fromUnicode_;
};

struct CodePage {
    explicit CodePage(int page)
        : number(page),
          toUtf8("UTF-8", IconvName(page)),
          fromUtf8(IconvName(page), "UTF-8"),
          isKnown(toUtf8.Opened() && fromUtf8.Opened()),
          isBytes(isKnown && bytes.Load(toUtf8)) {}

    int number;
    Converter toUtf8;
    Converter fromUtf8;
    ByteTable bytes;
    bool isKnown;
    bool isBytes;
};

/// Loading costs far more than most conversions, and a database has one code page for all its texts, so each thread
/// keeps the page it used last.
CodePage& Loaded(int number) {
    thread_local std::unique_ptr<CodePage> last;
    if (!last || last->number != number) last = std::make_unique<CodePage>(number);
    return *last;
}

void CountReplaced(std::size_t* replaced) {
    if (replaced != nullptr) ++*replaced;
}

std::string DecodedBytes(const ByteTable& table, std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() * 2);
    for (const char byte : bytes) AppendCodePoint(table.CodePointOf(byte), result);
    return result;
}

std::string EncodedBytes(const ByteTable& table, std::string_view text, std::size_t* replaced) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = table.ByteOf(NextCodePoint(text, at));
        result += byte.value_or('?');
        if (!byte) CountReplaced(replaced);
    }
    return result;
}

}  // namespace

std::string Utf8FromCp1252(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const std::size_t plain = AsciiRun(bytes, at);
        result.append(bytes, at, plain);
        at += plain;
        if (at == bytes.size()) break;
        const auto byte = static_cast<unsigned char>(bytes[at]);
        AppendCodePoint(byte < 0xA0 ? char32_t{kUpperControls[byte - 0x80u]} : char32_t{byte}, result);
    }
    return result;
}

int Cp1252Byte(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return static_cast<int>(codePoint);
    for (std::size_t i = 0; i < kUpperControls.size(); ++i)
        if (kUpperControls[i] == codePoint) return static_cast<int>(0x80 + i);
    return -1;
}

void AppendCp1252(std::string_view utf8, std::string& out, std::size_t* replaced) {
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t plain = AsciiRun(utf8, at);
        out.append(utf8, at, plain);
        at += plain;
        if (at == utf8.size()) break;
        const int byte = Cp1252Byte(NextCodePoint(utf8, at));
        out += byte < 0 ? '?' : static_cast<char>(byte);
        if (byte < 0) CountReplaced(replaced);
    }
}

std::string Cp1252FromUtf8(std::string_view text, std::size_t* replaced) {
    std::string result;
    result.reserve(text.size());
    AppendCp1252(text, result, replaced);
    return result;
}

std::string Utf8FromCodePage(std::string_view bytes, int codePage) {
    if (codePage == 1252) return Utf8FromCp1252(bytes);
    CodePage& page = Loaded(codePage);
    if (!page.isKnown) return Utf8FromCp1252(bytes);
    if (page.isBytes) return DecodedBytes(page.bytes, bytes);
    std::string result;
    result.reserve(bytes.size() * 2);
    page.toUtf8.Convert(bytes, result, [&](std::string_view rest, bool) {
        AppendCodePoint(static_cast<unsigned char>(rest.front()), result);
        return std::size_t{1};
    });
    return result;
}

std::string CodePageFromUtf8(std::string_view text, int codePage, std::size_t* replaced) {
    if (codePage == 1252) return Cp1252FromUtf8(text, replaced);
    CodePage& page = Loaded(codePage);
    if (!page.isKnown) return Cp1252FromUtf8(text, replaced);
    if (page.isBytes) return EncodedBytes(page.bytes, text, replaced);
    std::string result;
    result.reserve(text.size());
    page.fromUtf8.Convert(text, result, [&](std::string_view rest, bool) {
        result += '?';
        CountReplaced(replaced);
        std::size_t length = 0;
        NextCodePoint(rest, length);
        return length;
    });
    return result;
}

std::u16string Utf16FromUtf8(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t codePoint = NextCodePoint(text, at);
        if (codePoint < 0x10000) {
            result += static_cast<char16_t>(codePoint);
        } else {
            result += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
            result += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
        }
    }
    return result;
}

std::string Utf8FromUtf16(std::u16string_view units) {
    const auto isHigh = [](char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
    const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
    std::string result;
    result.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (isHigh(units[i]) && i + 1 < units.size() && isLow(units[i + 1])) {
            const auto high = static_cast<char32_t>(units[i] - 0xD800);
            AppendCodePoint(0x10000 + (high << 10) + (units[i + 1] - 0xDC00u), result);
            ++i;
        } else {
            AppendCodePoint(units[i], result);  // a lone surrogate comes out as U+FFFD
        }
    }
    return result;
}

}  // namespace quillform
