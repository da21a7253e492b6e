#include <gtest/gtest.h>

#include "platform/CodePage.h"

namespace quillform {
namespace {

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

TEST(CodePage, EveryByteComesBack) {
    // 1253 and 1257 have undefined bytes; 437 is full; 9999 doesn't exist and is read as 1252.
    for (const int codePage : {1250, 1251, 1252, 1253, 1254, 1255, 1257, 1258, 874, 437, 850, 9999}) {
        std::size_t replaced = 0;
        const std::string text = Utf8FromCodePage(AllBytes(), codePage);
        EXPECT_TRUE(CodePageFromUtf8(text, codePage, &replaced) == AllBytes()) << codePage;
        EXPECT_EQ(replaced, 0u) << codePage;
    }
}

TEST(CodePage, Cp1252) {
    EXPECT_EQ(Utf8FromCp1252("\x80\xE4\x9F\x81"), "\xE2\x82\xAC\xC3\xA4\xC5\xB8\xC2\x81");
    std::size_t replaced = 0;
    EXPECT_EQ(Cp1252FromUtf8("a\xE2\x82\xAC\xD0\x96\xF0\x9F\x98\x80", &replaced), "a\x80??");
    EXPECT_EQ(replaced, 2u);
    std::string out = "x";
    AppendCp1252("\xC3\xA4", out);
    EXPECT_EQ(out, "x\xE4");
}

TEST(CodePage, OtherPages) {
    EXPECT_EQ(Utf8FromCodePage("\xC6", 1251), "\xD0\x96");
    EXPECT_EQ(Utf8FromCodePage("\x93\xFA", 932), "\xE6\x97\xA5");
    EXPECT_EQ(CodePageFromUtf8("\xE6\x97\xA5", 932), "\x93\xFA");
    EXPECT_EQ(Utf8FromCodePage("a\x93", 932), "a\xC2\x93");  // a lead byte with nothing behind it
    std::size_t replaced = 0;
    EXPECT_EQ(CodePageFromUtf8("\xC3\xA4x\xE6\x97\xA5", 1251, &replaced), "?x?");
    EXPECT_EQ(replaced, 2u);
    const std::string longText(5000, '\xC6');
    EXPECT_EQ(CodePageFromUtf8(Utf8FromCodePage(longText, 1251), 1251), longText);
}

TEST(CodePage, Utf16) {
    EXPECT_EQ(Utf16FromUtf8("a\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u20AC\U0001F600");
    EXPECT_EQ(Utf8FromUtf16(u"a\u20AC\U0001F600"), "a\xE2\x82\xAC\xF0\x9F\x98\x80");
    const char16_t lone[] = {0xDC00, 'a', 0xD800, 0xD800, 0xDC00, 0xD800};
    EXPECT_EQ(Utf8FromUtf16({lone, 6}),
              "\xEF\xBF\xBD"
              "a\xEF\xBF\xBD\xF0\x90\x80\x80\xEF\xBF\xBD");
}

}  // namespace
}  // namespace quillform
