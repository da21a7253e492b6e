#include <gtest/gtest.h>

#include <random>

#include "catalog/CommonSheets.h"
#include "output/RtfFrame.h"
#include "output/RtfText.h"
#include "output/RunToFile.h"
#include "platform/CodePage.h"

namespace quillform::testing {
namespace {

constexpr std::string_view bodyStart = "\\deftab720\r\n";

/// What stands between the frame and the end of the document.
std::string BodyOf(const std::string& document) {
    const std::size_t start = document.find(bodyStart);
    if (start == std::string::npos || !document.ends_with("\\par}\r\n")) return "no document: " + document;
    const std::size_t from = start + bodyStart.size();
    return document.substr(from, document.size() - from - std::string_view("\\par}\r\n").size());
}

std::string Body(Scene& scene, OutputType type = OutputType::RichText, RunOptions options = {.walk = Walk::OnePass}) {
    return BodyOf(RunTo(scene, type, options));
}

constexpr std::string_view frame =
    R"({\rtf1\ansi \deff4\deflang1033{\fonttbl{\f1\fcharset0\fprq2 Times New Roman;}{\f2\fcharset0\fprq2 Courier New;}})"
    "\r\n"
    R"({\colortbl;\red0\green0\blue0;\red0\green0\blue128;\red0\green128\blue128;\red0\green128\blue0;\red128\green0\blue128;\red128\green0\blue0;\red128\green128\blue0;\red128\green128\blue128;\red192\green192\blue192;)"
    "\r\n"
    R"(\red0\green0\blue255;\red0\green255\blue255;\red0\green255\blue0;\red255\green0\blue255;\red255\green0\blue0;\red255\green255\blue0;\red255\green255\blue255;})"
    "\r\n"
    R"({\stylesheet{\f4\fs20 \snext0 Normal;}{\*\cs10 \additive Default Paragraph Font;}}{\info{\author Project1}{\creatim\yr1999\mo1\dy1\hr08\min05}{\version1}{\edmins3}{\nofpages0}{\nofwords0}{\deftab15000})"
    "\r\n"
    R"({\nofchars0}{\vern49203}\paperw12240 \paperh15840 \margl720 \margr720 \margt720 \margb720}\widowctrl\ftnbj\aenddoc\formshade \fet0\sectd \linex0\endnhere {\*\pnseclvl1\pnucrm\pnstart1\pnindent720\pnhang{\pntxta .}}{\*\pnseclvl2\pnucltr\pnstart1\pnindent720\pnhang{\pntxta .}})"
    "\r\n"
    R"({\*\pnseclvl3\pndec\pnstart1\pnindent720\pnhang{\pntxta .}}{\*\pnseclvl4\pnlcltr\pnstart1\pnindent720\pnhang{\pntxta )}}{\*\pnseclvl5\pndec\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}}{\*\pnseclvl6\pnlcltr\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
    "\r\n"
    R"({\*\pnseclvl7\pnlcrm\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}}{\*\pnseclvl8\pnlcltr\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}}{\*\pnseclvl9\pnlcrm\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
    "\r\n"
    "\\deftab720\r\n";

TEST(RtfOutput, WholeDocument) {
    Scene scene(columns, {Row("A", "x"), Row("B", "y")});
    const FixedClock clock(36161 + (8 * 60 + 5) / 1440.0);  // 1999-01-01 08:05
    scene.runClock = &clock;
    scene.Add(City, 0, 0, 4).PrimarySort = true;
    scene.Add(Name, 0, 12, 4);
    EXPECT_EQ(RunTo(scene, OutputType::RichText),
              std::string(frame) + R"({\f1\fs20\cf1\cb16 A\tab\tab}{\f1\fs20\cf1\cb16 x}\par)" + "\r\n" +
                  R"({\f1\fs20\cf1\cb16 B\tab\tab}{\f1\fs20\cf1\cb16 y}\par)" + "\r\n\\par}\r\n");
    scene.layout.settings.intOrientation = 0;
    std::string turned(frame);
    turned.replace(turned.find("\\paperw12240 \\paperh15840"), 25, "\\paperw15840 \\paperh12240");
    EXPECT_TRUE(RunTo(scene, OutputType::RichText).starts_with(turned));
}

/// The body with its line ends as "|" and without the words that open every group in the usual look.
std::string Short(Scene& scene, OutputType type = OutputType::RichText, RunOptions options = {.walk = Walk::OnePass}) {
    std::string body = Body(scene, type, options);
    const auto replaceAll = [&body](std::string_view what, std::string_view by) {
        for (std::size_t at = body.find(what); at != std::string::npos; at = body.find(what, at + by.size()))
            body.replace(at, what.size(), by);
    };
    replaceAll("\\f1\\fs20\\cf1\\cb16", "");
    replaceAll("\r\n", "|");
    return body;
}

TEST(RtfOutput, FontTable) {
    const auto tableOf = [](const std::vector<std::string>& names) {
        collFields items;
        for (const std::string& name : names) {
            clssFields item;
            item.FontName = name;
            items.Add(item);
        }
        return RtfFontTable(items);
    };
    const std::string start = R"({\rtf1\ansi \deff4\deflang1033{\fonttbl)";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"Courier New"}, R"({\f1\fcharset0\fprq2 Courier New;}})"},
        {{"Times New Roman", "Arial", "Times New Roman"},
         R"({\f1\fcharset0\fprq2 Times New Roman;}{\f2\fcharset0\fprq2 Arial;}{\f3\fcharset0\fprq2 Courier New;}})"},
        {{"COURIER NEW", " Arial", "Arial"},
         R"({\f1\fcharset0\fprq2 COURIER NEW;}{\f2\fcharset0\fprq2 Arial;}{\f3\fcharset0\fprq2 Arial;})"
         R"({\f4\fcharset0\fprq2 Courier New;}})"},
    };
    for (const auto& [names, text] : cases) EXPECT_EQ(tableOf(names).Text(), start + text + "\r\n");
    // The longest line that stays open has 200 characters.
    const std::string filled(200 - start.size() - std::string_view(R"({\f1\fcharset0\fprq2 ;})").size(), 'x');
    EXPECT_NE(tableOf({filled}).Text().find(R"(x;}{\f2)"), std::string::npos);
    EXPECT_NE(tableOf({filled + "x"}).Text().find("x;}\r\n{\\f2"), std::string::npos);

    std::vector<std::string> many;
    for (int i = 1; i <= 41; ++i) many.push_back("Font " + std::to_string(i));
    const RtfFontTable full = tableOf(many);
    EXPECT_EQ(full.NumberOf("Font 40 "), 40);
    EXPECT_EQ(full.NumberOf("font 40"), 1);
    EXPECT_EQ(full.NumberOf("Font 41"), 1);
    EXPECT_EQ(full.CourierNumber(), 1);
    EXPECT_EQ(full.LeftOut(), std::vector<std::string>{"Font 41"});
    EXPECT_EQ(full.Text().find("Courier"), std::string::npos);
}

TEST(RtfOutput, FontsWithoutASlotAreTold) {
    Scene scene(columns, {Row("A")});
    for (int i = 1; i <= 42; ++i) scene.Add(City, 0, static_cast<float>(i), 1).FontName = "Font " + std::to_string(i);
    scene.layout.Fields.Item(1).PrimarySort = true;
    const std::string body = Body(scene);
    EXPECT_EQ(body.rfind("{\\f40"), body.find("{\\f40"));
    EXPECT_EQ(scene.user.warnings,
              std::vector<std::string>{"Rich text holds 40 fonts; \"Font 41\" and 1 more became \"Font 1\"."});
    scene.layout.settings.boolCourier = true;
    scene.user.warnings.clear();
    Body(scene, OutputType::Screen);
    EXPECT_EQ(scene.user.warnings,
              std::vector<std::string>{"Rich text holds 40 fonts; \"Courier New\" became \"Font 1\"."});
}

TEST(RtfOutput, LooksOfItems) {
    struct Case {
        void (*change)(clssFields&);
        std::string_view group;
    };
    const Case cases[] = {
        {[](clssFields& item) { item.FontSize = 8.25; }, R"({\f1\fs16\cf1\cb16 A})"},
        {[](clssFields& item) { item.FontSize = 10.75; }, R"({\f1\fs21\cf1\cb16 A})"},
        {[](clssFields& item) { item.FontForeColor = 15, item.FontBackColor = 0; }, R"({\f1\fs20\cf16\cb1 A})"},
        {[](clssFields& item) { item.FontItalic = item.FontBold = item.FontUnderline = true; },
         R"({\f1\fs20\cf1\cb16\i\b\ul A})"},
        {[](clssFields& item) { item.FontBold = true, item.Left = 6; }, R"({\f1\fs20\cf1\cb16\b\tab A})"},
        {[](clssFields& item) { item.FontAllignment = "R"; }, R"({\f1\fs20\cf1\cb16 A})"},
    };
    for (const Case& c : cases) {
        Scene scene(columns, {Row(" A ")});
        c.change(scene.Add(City, 0, 0, 4));
        scene.layout.Fields.Item(1).PrimarySort = true;
        EXPECT_EQ(Body(scene), std::string(c.group) + "\\par\r\n");
    }
}

TEST(RtfOutput, TabsAndFittedTexts) {
    struct Case {
        std::string text;
        float left;
        float nextLeft;
        float nextTop;
        std::string_view groups;
    };
    // A letter is as wide as a column, and the text has one blank before it.
    const Case cases[] = {
        {"a", 0, 12, 0, R"({ a\tab\tab}{ x})"},                         // 240, 720, 1440
        {"a", 0, 12.5, 0, R"({ a\tab\tab\tab}{ x})"},                   // 1440 lies before 1500
        {"a", 6, 12, 0, R"({\tab a\tab}{ x})"},                         // starts on a stop
        {"a", 6.5, 18, 0, R"({\tab\tab a\tab\tab}{ x})"},               // 780 + 240 = 1020
        {"abcde", 0, 12, 0, R"({ abcde \tab}{ x})"},                    // ends on a stop
        {"abcdef", 0, 12, 0, R"({ abcdef\tab}{ x})"},                   // 0.167 steps behind it
        {"abcdef", 0, 4, 0, R"({ ab\tab}{ x})"},                        // must end before the next item, not at it
        {"\xC3\xA9\xC3\xA9\xC3\xA9", 0, 6, 0, "{ \xE9\xE9\\tab}{ x}"},  // letters are dropped whole
        {"abc", 0, 1, 0, R"({ \tab}{ x})"},                             // all is dropped, and a blank follows
        {"abc", 0, 0, 0, R"({ }{ x})"},
        {"abcdefgh", 0, 3, 1, "{ abcdefgh} \\par|{\\tab x}"},  // what stands on another row is in nobody's way
        {"abcdefghijk", 0, 0, 1, "{ abcdefghijk } \\par|{ x}"},
        {"", 6, 12, 0, R"({\tab \tab}{ x})"},
    };
    for (const Case& c : cases) {
        Scene scene(columns, {Row(c.text, "x")});
        scene.Add(City, 0, c.left, 4).PrimarySort = true;
        scene.Add(Name, c.nextTop, c.nextLeft, 4);
        EXPECT_EQ(Short(scene), std::string(c.groups) + "\\par|") << c.text << " " << c.nextLeft;
    }
}

TEST(RtfOutput, ScreenItemsStandOnTabStops) {
    Scene scene(columns, {Row("a", "b", 7)});
    scene.Add(City, 0, 1, 4).PrimarySort = true;  // 120 becomes 720, ends at 1200
    scene.Add(Name, 0, 8, 4);                     // three columns on: 1560 becomes 2160, ends at 2640
    scene.Add(Amount, 0, 12.5, 4);                // half a column is none: 2640 becomes 2880
    scene.Add(City, 1, 12, 4);                    // each row starts anew
    EXPECT_EQ(Short(scene, OutputType::Screen), R"({\tab a\tab\tab}{ b\tab}{ 7} \par|{\tab\tab a}\par|)");
    std::vector<std::pair<int, int>> boxes;
    for (const clssFields& item : scene.layout.Fields) boxes.emplace_back(item.TwipStart, item.TwipEnd);
    EXPECT_EQ(boxes, (std::vector<std::pair<int, int>>{{720, 1200}, {2160, 2640}, {2880, 3360}, {1440, 1920}}));

    scene.Add(City, 0, 200, 60);
    scene.Add(City, 0, 262, 1);
    const std::unique_ptr<Output> output = MakeOutput(OutputType::Screen, {ScratchFolder().File("x.rtf")});
    const RunOutcome outcome = scene.Run(*output);
    ASSERT_TRUE(outcome.failure);
    EXPECT_EQ(outcome.failure->Number(), ErrorNumber::Overflow);
}

TEST(RtfOutput, CourierHoldsThePlacesByBlanks) {
    struct Case {
        std::string text;
        std::string alignment;
        std::string_view group;
    };
    const Case cases[] = {
        {"ab", "L", R"({\f2\fs20\cf1\cb16 ab   })"},           {" ab ", "L", R"({\f2\fs20\cf1\cb16 ab   })"},
        {"abcdefg", "L", R"({\f2\fs20\cf1\cb16 abcde})"},      {"ab", "R", R"({\f2\fs20\cf1\cb16\tqr    ab})"},
        {"abcdefg ", "R", R"({\f2\fs20\cf1\cb16\tqr cdefg})"}, {"ab", "C", R"({\f2\fs20\cf1\cb16\tqc  ab  })"},
        {"abcdefg", "C", R"({\f2\fs20\cf1\cb16\tqc abcde})"},
    };
    for (const Case& c : cases) {
        Scene scene(columns, {Row(c.text, "x")});
        scene.layout.settings.boolCourier = true;
        clssFields& item = scene.Add(City, 0, 3, 5);
        item.FontAllignment = c.alignment;
        item.PrimarySort = true;
        scene.Add(Name, 0, 9, 1);
        EXPECT_EQ(Body(scene, OutputType::Screen), std::string(c.group) + "{\\f2\\fs20\\cf1\\cb16\\tab  x}\\par\r\n");
        // A document to keep is set in the fonts of the layout all the same.
        EXPECT_TRUE(Body(scene).starts_with("{\\f1")) << c.text;
    }
}

TEST(RtfOutput, GroupsHeadingsAndTotals) {
    Scene scene(columns, {Row("A", "x", 10), Row("A", "y", 20), Row("B", "y", 7)});
    scene.layout.settings.intSpaces1 = 2;
    scene.Add(-1, 0, 0, 8, " Head ");
    scene.Add(9000, 0, 12, 4);
    clssFields& city = scene.Add(City, 2, 0, 4);
    city.PrimarySort = true;
    city.SuppressDuplicate = true;
    clssFields& amount = scene.Add(Amount, 2, 6, 4);
    amount.SubTotalFlag1 = amount.GrandTotalFlag = true;
    const std::string expected =
        R"({ Head\tab\tab}{ 1} \par| \par|{ A\tab}{ 10}\par|{ 20}\par|)"
        R"({ \tab}{ ____} \par|{ \tab}{ 30} \par|\par|\par|{ B\tab}{ 7}\par|)"
        R"({ \tab}{ ____} \par|{ \tab}{ 7} \par|\par|\par|{ \tab}{ ____} \par|{ \tab}{ 37} \par|)";
    EXPECT_EQ(Short(scene), expected);
    scene.GroupBy(0);
    EXPECT_EQ(Short(scene, OutputType::RichText, {.walk = Walk::Groups}), expected);

    scene.layout.settings.intSpaces1 = 0;
    scene.layout.settings.boolPageBreak1 = true;
    EXPECT_NE(Short(scene).find(R"({ 30} \par| {\page}|{ Head\tab\tab}{ 2} \par| \par|{ B\tab})"), std::string::npos);
}

TEST(RtfOutput, HiddenRowsLeaveNoLine) {
    Scene scene(columns, {Row("A", "x", 1), Row("A", "y", 2)});
    clssFields& city = scene.Add(City, 0, 0, 3);
    city.PrimarySort = city.SuppressDetails = true;
    clssFields& amount = scene.Add(Amount, 0, 6, 3);
    amount.SuppressDetails = amount.GrandTotalFlag = true;
    EXPECT_EQ(Short(scene), R"({ \tab}{ ___} \par|{ \tab}{ 3} \par|)");
    // The second row takes the place of the first, and the third adds no line.
    scene.Add(Name, 1, 0, 3);
    scene.Add(Name, 2, 0, 3).SuppressDetails = true;
    amount.GrandTotalFlag = false;
    EXPECT_EQ(Short(scene), R"({ x} \par|{ y} \par|)");
}

TEST(RtfOutput, PagesAreCountedInLines) {
    Scene scene(columns, {});
    for (int i = 1; i <= 53; ++i) scene.data.rows.push_back(Row("A", "", i));
    scene.Add(City, 0, 0, 3).PrimarySort = true;
    const std::string body = Short(scene);
    std::string expected;
    for (int i = 1; i <= 53; ++i) expected += i == 52 ? " {\\page}|{ A}\\par|" : "{ A}\\par|";
    EXPECT_EQ(body, expected);
}

TEST(RtfOutput, CancelledRunsEndWellFormed) {
    Scene scene(columns, {Row("A"), Row("B"), Row("C")});
    scene.user.cancelAtYield = 1;
    scene.Add(City, 0, 0, 3).PrimarySort = true;
    EXPECT_EQ(Short(scene), R"({ A}\par|{ B})");
}

/// Labels 3 across and 2 down, 1 inch wide and half an inch high.
Scene LabelScene(int records) {
    Scene scene(columns, {});
    for (int i = 1; i <= records; ++i) scene.data.rows.push_back(Row(i < 3 ? "A" : "B", std::to_string(i)));
    const CommonSheet sheet{
        .across = 3, .down = 2, .height = 0.5F, .width = 1, .leftMargin = 0.25F, .horizontalGap = 0.125F};
    UseLabels(sheet, scene.layout.settings);
    scene.Add(City, 0, 6, 4).PrimarySort = true;
    scene.Add(Name, 1, 0, 4);
    return scene;
}

TEST(RtfOutput, LabelsStandInTheCellsOfATable) {
    const std::string row =
        R"(\trowd \trgaph180\trrh-720\trleft-180\trkeep \cellx1980\cellx3600\cellx5040 \pard \li198\ri198\widctlpar\intbl |)";
    const auto label = [](std::string_view city, std::string_view name) {
        return "{\\tx720|{\\tab " + std::string(city) + "} \\par|{ " + std::string(name) + "}";
    };
    const std::string expected = row + label("A", "1") + "}\\cell |" + label("A", "2") + "}\\cell |" + label("B", "3") +
                                 "}\\cell |\\row " + row + label("B", "4") + "}\\cell |" + label("B", "5") +
                                 "}\\cell |" + label("B", "6") + "}\\cell |\\row \\pard{\\v| {\\page}|}" + row +
                                 label("B", "7") + "}\\cell |\\cell \\cell \\row \\pard\\v| ";
    Scene scene = LabelScene(7);
    EXPECT_EQ(Short(scene), expected);
    EXPECT_EQ(Short(scene, OutputType::Screen), expected);
    scene.GroupBy(0);
    EXPECT_EQ(Short(scene, OutputType::RichText, {.walk = Walk::Groups}), expected);

    scene.layout.settings.intSpaces1 = 1;
    EXPECT_NE(Short(scene).find("{ 2}}\\cell |{\\tx720|\\par|{\\tab B}"), std::string::npos);
    scene.layout.settings.intLabelsDown = 0;
    const std::unique_ptr<Output> output = MakeOutput(OutputType::RichText, {ScratchFolder().File("x.rtf")});
    EXPECT_EQ(scene.Run(*output).end, RunEnd::Failed);
}

struct TextCase {
    std::string text;
    std::string bytes;
};

TEST(RtfOutput, TextsGoInUnchanged) {
    const TextCase cases[] = {
        {"a, \"b\" 'c'\r\nd", "{ a, \"b\" 'c'\r\nd}"},
        {"caf\xC3\xA9 \xE2\x82\xAC", "{ caf\xE9 \x80}"},
        {"\xCE\xA9\xF0\x9F\x98\x80", R"({ \u937?\u-10179?\u-8704?})"},
        {R"(C:\DATA\new)", R"({ C:\DATA\new})"},
        {R"(\\host)", R"({ \\host})"},
        {"{x}", "{ {x}}"},
        // The text stays as it is, and the braces around it keep the document whole.
        {"a{b", "{ a{b}}"},
        {"a}b", "{{ a}b}"},
        {"}{{", "{ }{{}}"},
        {R"(C:\)", R"({ C:\}})"},
        {R"(\{)", R"({ \{})"},
        // What would keep readers from opening the document is defused.
        {R"(C:\bin99)", R"({ C:\\bin99})"},
        {R"(C:\bin\x)", R"({ C:\bin\x})"},
        {R"(\'e9 \'xy \')", R"({ \'e9 \\'xy \\'})"},
    };
    for (const TextCase& c : cases) {
        Scene scene(columns, {Row(c.text)});
        scene.Add(City, 0, 0, 60).PrimarySort = true;
        std::string body = Body(scene);
        ASSERT_TRUE(body.ends_with("\\par\r\n")) << body;
        const std::size_t look = body.find("\\f1\\fs20\\cf1\\cb16");
        ASSERT_NE(look, std::string::npos);
        EXPECT_EQ(body.erase(look, 17), c.bytes + "\\par\r\n") << c.text;
        const bool hasCommands = c.text.find_first_of("\\{}") != std::string::npos;
        EXPECT_EQ(scene.user.warnings.size(), hasCommands ? 1U : 0U) << c.text;
    }
}

TEST(RtfOutput, AnyTextLeavesTheDocumentWhole) {
    constexpr std::string_view pieces[] = {"\\", "{", "}", "'",    "bin",      "7",       "e",
                                           " ",  "x", "-", "\r\n", "\xC3\xA9", "\xCE\xA9"};
    std::mt19937 random(4711);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (auto count = random() % 12; count > 0; --count) text += pieces[random() % std::size(pieces)];
        std::string group = "{\\f1 ";
        AppendRtfText(text, group);
        group += "\\tab}";
        BalanceRtfGroup(group, 0);
        long depth = 0;
        for (std::size_t at = 0; at < group.size(); ++at) {
            if (group[at] == '\\') {
                const std::string_view rest = std::string_view(group).substr(at + 1);
                const auto isHex = [&rest](std::size_t i) {
                    return std::isxdigit(static_cast<unsigned char>(rest[i]));
                };
                ASSERT_FALSE(rest.starts_with("bin7") || rest.starts_with("bin-")) << group;
                ASSERT_TRUE(!rest.starts_with('\'') || (isHex(1) && isHex(2))) << group;
                ++at;
            } else if (group[at] == '{') {
                ++depth;
            } else if (group[at] == '}') {
                ASSERT_GE(--depth, 0) << group;
            }
        }
        ASSERT_EQ(depth, 0) << group;
    }
}

}  // namespace
}  // namespace quillform::testing
