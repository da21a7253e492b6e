#include <string>

#include "persistence/LayoutFile.h"
#include "persistence/RecordLine.h"
#include "platform/CodePage.h"
#include "platform/Numbers.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string_view BooleanText(bool flag) { return flag ? "True" : "False"; }

std::string Trimmed(double number) { return TrimmedStr(number); }

std::string ThreeDigits(int number) {
    const std::string padded = "000" + TrimmedStr(static_cast<double>(number));
    return padded.substr(padded.size() - 3);
}

RecordLineWriter WriteItem(const clssFields& item) {
    RecordLineWriter line("#");
    line.Unquoted(Trimmed(item.Code)).Unquoted(Str(item.Top)).Unquoted(Str(item.Left));
    line.Unquoted(Str(static_cast<double>(item.Length)));
    line.Quoted(item.Text).Quoted(Trim(item.FontName)).Quoted(Trimmed(item.FontSize));
    line.Quoted(BooleanText(item.FontItalic))
        .Quoted(BooleanText(item.FontUnderline))
        .Quoted(BooleanText(item.FontBold));
    line.Quoted(Trimmed(item.FontForeColor)).Quoted(Str(static_cast<double>(item.FontBackColor)));
    line.Quoted(item.FontAllignment);
    for (const bool flag : {item.PrimarySort, item.SecondarySort, item.TriarySort, item.SubTotalFlag1,
                            item.SubTotalFlag2, item.GrandTotalFlag})
        line.Quoted(BooleanText(flag));
    line.Quoted(item.Mask).Quoted(BooleanText(item.SuppressDuplicate)).Quoted(BooleanText(item.SuppressDetails));
    return line;
}

RecordLineWriter WriteQuery(const clssQuery& query) {
    RecordLineWriter line("&");
    line.Unquoted(Str(static_cast<double>(query.Code)));
    line.Quoted(query.Text).Quoted(query.Value).Quoted(query.Operator).Quoted(query.Join);
    return line;
}

RecordLineWriter WriteSettings(const ReportSettings& settings) {
    RecordLineWriter line("*");
    line.Unquoted(settings.boolPageBreak1 ? "1" : "0").Unquoted(Trimmed(settings.intSpaces1));
    line.Unquoted(Trimmed(settings.intOutputType)).Quoted(Trimmed(settings.intCharChange1));
    line.Quoted(settings.boolPageBreak2 ? "1" : "0").Quoted(Trimmed(settings.intSpaces2));
    line.Quoted(Trimmed(settings.intCharChange2)).Quoted(Trimmed(settings.intOrientation));
    line.Quoted(Trim(settings.strDatabase[1])).Quoted(Trimmed(settings.intJoinType));
    line.Quoted(Trimmed(settings.intPaperSize)).Quoted(BooleanText(settings.boolLabels));
    line.Quoted(Trimmed(settings.intLabelsAcross)).Quoted(Trimmed(settings.intLabelsDown));
    for (const float measure : {settings.sngLabelHeight, settings.sngLabelWidth, settings.sngTopMargin,
                                settings.sngLeftMargin, settings.sngHorizontalGap, settings.sngVerticalGap})
        line.Quoted(TrimmedStr(measure));
    line.Quoted(BooleanText(settings.boolCourier));
    return line;
}

}  // namespace

std::string ItemRecord(const clssFields& item) { return WriteItem(item).Line(); }

std::string QueryRecord(const clssQuery& line) { return WriteQuery(line).Line(); }

std::string SettingsRecord(const ReportSettings& settings) { return WriteSettings(settings).Line(); }

std::string LayoutText(const Layout& layout, bool* hasReplaced) {
    std::string text =
        "^" + Trimmed(layoutMajorVersion) + "." + ThreeDigits(layoutMinorVersion) + "." + ThreeDigits(layoutRevision);
    text += lineEnd;
    bool anyReplaced = false;
    const auto append = [&](const RecordLineWriter& line) {
        text += line.Line();
        text += lineEnd;
        anyReplaced = anyReplaced || line.HasReplaced();
    };
    for (const clssFields& item : layout.Fields) append(WriteItem(item));
    for (const clssQuery& line : layout.Queries) append(WriteQuery(line));
    append(WriteSettings(layout.settings));
    if (hasReplaced) *hasReplaced = anyReplaced;
    return text;
}

bool SaveLayout(const std::string& fileName, const Layout& layout, UserInterface& user) {
    SaveLosses losses;
    try {
        OutputFile file(TargetPath(fileName));
        file.Write(Cp1252FromUtf8(LayoutText(layout, &losses.hasReplaced), &losses.lostCharacters));
        file.Commit();
    } catch (const RunTimeError& error) {
        user.Message("The report layout was not saved.  " + std::string(error.what()));
        return false;
    }
    for (const std::string& sentence : LossesInWords(fileName, "a layout file", losses)) user.Warn(sentence);
    user.Message("Report Layout Saved");
    return true;
}

}  // namespace quillform
