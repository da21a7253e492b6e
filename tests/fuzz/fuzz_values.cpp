#include <cmath>
#include <cstdint>

#include "platform/CodePage.h"
#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

using namespace quillform;

namespace {

void Require(bool holds) {
    if (!holds) __builtin_trap();
}

}  // namespace

/// Texts that are read as numbers, dates and characters.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        Require(std::isfinite(Val(text)));
    } catch (const RunTimeError&) {
    }
    const auto number = ParseNumber(text);
    Require(!number || std::isfinite(*number));
    if (const auto serial = ParseDate(text, 2024)) {
        std::string written;
        AppendGeneralDate(*serial, written);
        const auto again = ParseDate(written, 2024);
        Require(again && std::fabs(*again - *serial) < 1e-6);
    }
    Require(Cp1252FromUtf8(Utf8FromCp1252(text)) == text);
    Require(CodePageFromUtf8(Utf8FromCodePage(text, 1253), 1253) == text);
    static_cast<void>(CodePageFromUtf8(Utf8FromCodePage(text, 932), 932));
    static_cast<void>(Utf8FromUtf16(Utf16FromUtf8(text)));
    Require(EqualCaseBlind(UpperCase(text), LowerCase(text)));
    const std::size_t count = CountCharacters(text);
    Require(std::string(LeftCharacters(text, count / 2)) + std::string(RightCharacters(text, count - count / 2)) ==
            text);
    return 0;
}
