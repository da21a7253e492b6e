#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "data/collation/IndexText.h"
#include "data/collation/TextOrder.h"

namespace quillform::collation {
namespace {

int Sign(int number) { return number < 0 ? -1 : number > 0; }

std::string Key(std::string_view text) {
    std::string key;
    AppendKey(text, key);
    return key;
}

std::string Hex(std::string_view bytes) {
    std::string out;
    for (const char byte : bytes) {
        out.push_back("0123456789abcdef"[static_cast<unsigned char>(byte) >> 4]);
        out.push_back("0123456789abcdef"[byte & 15]);
    }
    return out;
}

TEST(TextOrder, EqualTexts) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"", "   "},
        {"abc", "ABC"},
        {"Abc  ", "abc"},
        {"É", "é"},
        {"straße", "STRASSE"},
        {"Ørsted", "ørsted"},
        {"Æon", "aeon"},
        {"ПРИВЕТ", "привет"},
    };
    for (const auto& [left, right] : cases) {
        EXPECT_TRUE(Equal(left, right)) << left << " | " << right;
        EXPECT_EQ(Hash(left), Hash(right)) << left << " | " << right;
        EXPECT_EQ(Key(left), Key(right)) << left << " | " << right;
    }
}

TEST(TextOrder, EachTextComesBeforeTheNext) {
    const char* texts[] = {
        "",
        " a",
        "#1",
        "10",
        "9",
        "a",
        "a-",
        "á",
        "ab",
        "abc",
        "Abd",
        "coop",
        "co-op",
        "coops",
        "cote",
        "coté",
        "côte",
        "résumés",
        "résumét",
        "zebra",
        "Ωmega",
        "дом",
        "\xF0\x9F\x98\x80",
        "\xF0\x9F\x98\x81",
    };
    for (std::size_t i = 0; i + 1 < std::size(texts); ++i) {
        for (std::size_t k = i + 1; k < std::size(texts); ++k) {
            EXPECT_EQ(Sign(Compare(texts[i], texts[k])), -1) << texts[i] << " | " << texts[k];
            EXPECT_EQ(Sign(Compare(texts[k], texts[i])), 1) << texts[i] << " | " << texts[k];
            EXPECT_LT(Key(texts[i]), Key(texts[k])) << texts[i] << " | " << texts[k];
        }
    }
}

/// Whatever the texts are, comparing them, their keys and their hashes tell one story.
TEST(TextOrder, CompareKeysAndHashesAgree) {
    const char* letters[] = {"a",    "A", "b", "B", "z", "-",    "'", " ",        "1",  "é",
                             "É",    "ß", "s", "Æ", "e", "\x01", "ж", "\xCC\x81", "か", "\xF0\x9F\x98\x80",
                             "\xFF", ".", "ü", "_"};
    std::mt19937 random(20260101);
    std::vector<std::string> texts;
    for (int i = 0; i < 400; ++i) {
        std::string text;
        for (auto length = random() % 6; length > 0; --length) text += letters[random() % std::size(letters)];
        texts.push_back(text);
    }
    for (const std::string& left : texts) {
        for (const std::string& right : texts) {
            const int order = Sign(Compare(left, right));
            ASSERT_EQ(order, Sign(Key(left).compare(Key(right)))) << left << " | " << right;
            if (order == 0) {
                ASSERT_EQ(Hash(left), Hash(right)) << left << " | " << right;
            }
        }
    }
}

TEST(TextOrder, KeysOfStoredIndexes) {
    const std::pair<const char16_t*, const char*> jet4[] = {
        {u"Tables", "6d4a4c5e516b0100"},
        {u"tables  ", "6d4a4c5e516b0100"},
        {u"NuNuCa Nu\u00DF-Nougat-Creme", "626f626f4d4a07626f6b6b62646f554a6d4d695160510101010180330682804b068200"},
    };
    for (const auto& [text, expected] : jet4) {
        std::string key;
        AppendJet4IndexKey(text, PairedLetters::CountTwo, key);
        EXPECT_EQ(Hex(key), expected);
    }
    std::string key;
    AppendJet3IndexKey("Plutzer Lebensmittelgro\xDFm\xE4rkte AG", key);
    EXPECT_EQ(Hex(key),
              "736d78777e6675116d6661667076"
              "6f6a7777666d68757276766f60756c7766116068"
              "02222222222260");
}

TEST(TextOrder, IndexKeysEndWithCharacter255) {
    const std::u16string longText(300, u'x'), shortText(255, u'x');
    std::string left, right;
    AppendJet4IndexKey(longText, PairedLetters::CountTwo, left);
    AppendJet4IndexKey(shortText, PairedLetters::CountTwo, right);
    EXPECT_EQ(left, right);
    EXPECT_FALSE(Equal(std::string(300, 'x'), std::string(255, 'x')));
}

}  // namespace
}  // namespace quillform::collation
