#include "output/RtfFrame.h"

#include <algorithm>

#include "output/RtfText.h"
#include "platform/Dates.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::size_t longestFontLine = 200;  // characters; past it a line of the font table ends
constexpr std::string_view courierSlot = "COURIER NEW";

constexpr std::string_view colourTable =
    R"({\colortbl;\red0\green0\blue0;\red0\green0\blue128;\red0\green128\blue128;\red0\green128\blue0;)"
    R"(\red128\green0\blue128;\red128\green0\blue0;\red128\green128\blue0;\red128\green128\blue128;)"
    R"(\red192\green192\blue192;)"
    "\r\n"
    R"(\red0\green0\blue255;\red0\green255\blue255;\red0\green255\blue0;\red255\green0\blue255;)"
    R"(\red255\green0\blue0;\red255\green255\blue0;\red255\green255\blue255;})"
    "\r\n";

constexpr std::string_view styles =
    R"({\stylesheet{\f4\fs20 \snext0 Normal;}{\*\cs10 \additive Default Paragraph Font;}}{\info{\author Project1})";
constexpr std::string_view facts = R"(}{\version1}{\edmins3}{\nofpages0}{\nofwords0}{\deftab15000})"
                                   "\r\n"
                                   R"({\nofchars0}{\vern49203})";
constexpr std::string_view landscape = R"(\paperw15840 \paperh12240)";
constexpr std::string_view portrait = R"(\paperw12240 \paperh15840)";
constexpr std::string_view section =
    R"( \margl720 \margr720 \margt720 \margb720}\widowctrl\ftnbj\aenddoc\formshade \fet0\sectd \linex0\endnhere )";
constexpr std::string_view numbering = R"({\*\pnseclvl1\pnucrm\pnstart1\pnindent720\pnhang{\pntxta .}})"
                                       R"({\*\pnseclvl2\pnucltr\pnstart1\pnindent720\pnhang{\pntxta .}})"
                                       "\r\n"
                                       R"({\*\pnseclvl3\pndec\pnstart1\pnindent720\pnhang{\pntxta .}})"
                                       R"({\*\pnseclvl4\pnlcltr\pnstart1\pnindent720\pnhang{\pntxta )}})"
                                       R"({\*\pnseclvl5\pndec\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
                                       R"({\*\pnseclvl6\pnlcltr\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
                                       "\r\n"
                                       R"({\*\pnseclvl7\pnlcrm\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
                                       R"({\*\pnseclvl8\pnlcltr\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
                                       R"({\*\pnseclvl9\pnlcrm\pnstart1\pnindent720\pnhang{\pntxtb (}{\pntxta )}})"
                                       "\r\n";

// The items are placed by tab characters for stops every 720 twips, and word processors that heed the 15000 above would
// put every one of them past the right margin.
constexpr std::string_view tabStops = R"(\deftab720)"
                                      "\r\n";

std::string TwoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string CreationTime(double now) {
    const DateParts parts = PartsOf(now);
    std::string year = std::to_string(parts.year);
    year.insert(0, 4 - std::min<std::size_t>(year.size(), 4), '0');
    return "{\\creatim\\yr" + year + "\\mo" + std::to_string(parts.month) + "\\dy" + std::to_string(parts.day) +
           "\\hr" + TwoDigits(parts.hour) + "\\min" + TwoDigits(parts.minute);
}

}  // namespace

RtfFontTable::RtfFontTable(const collFields& items) {
    for (const clssFields& item : items) {
        if (Add(item.FontName)) continue;
        if (std::find(leftOut_.begin(), leftOut_.end(), item.FontName) == leftOut_.end())
            leftOut_.push_back(item.FontName);
    }
    const bool hasCourier = std::find(strRTFFonts_.begin(), strRTFFonts_.end(), courier) != strRTFFonts_.end();
    addsCourier_ = !hasCourier && strRTFFonts_.size() < slots;
    if (addsCourier_) strRTFFonts_.emplace_back(courierSlot);
}

/// False if the table is full.
bool RtfFontTable::Add(std::string_view name) {
    if (std::find(strRTFFonts_.begin(), strRTFFonts_.end(), name) != strRTFFonts_.end()) return true;
    if (strRTFFonts_.size() == slots) return false;
    strRTFFonts_.emplace_back(name);
    return true;
}

int RtfFontTable::NumberOf(std::string_view fontName) const {
    const std::string_view wanted = Trim(fontName);
    for (std::size_t i = 0; i < strRTFFonts_.size(); ++i)
        if (Trim(strRTFFonts_[i]) == wanted) return static_cast<int>(i + 1);
    return 1;
}

std::optional<int> RtfFontTable::SlotOfCourier() const {
    for (std::size_t i = 0; i < strRTFFonts_.size(); ++i)
        if (EqualCaseBlind(Trim(strRTFFonts_[i]), courier)) return static_cast<int>(i + 1);
    return std::nullopt;
}

std::string RtfFontTable::Text() const {
    std::string text;
    std::string line = R"({\rtf1\ansi \deff4\deflang1033{\fonttbl)";
    for (std::size_t i = 0; i < strRTFFonts_.size(); ++i) {
        const bool isAdded = addsCourier_ && i + 1 == strRTFFonts_.size();
        std::string entry = "{\\f" + std::to_string(i + 1) + "\\fcharset0\\fprq2 ";
        entry += isAdded ? courier : Trim(strRTFFonts_[i]);
        entry += ";}";
        BalanceRtfGroup(entry, 0);
        line += entry;
        if (CountCharacters(line) <= longestFontLine) continue;
        text += line + "\r\n";
        line.clear();
    }
    return text + line + "}\r\n";
}

std::string RtfFrame(const RtfFontTable& fonts, bool isLandscape, double now) {
    std::string frame = fonts.Text();
    const std::string created = CreationTime(now);
    for (const std::string_view part : {colourTable, styles, std::string_view(created), facts,
                                        isLandscape ? landscape : portrait, section, numbering, tabStops})
        frame += part;
    return frame;
}

}  // namespace quillform
