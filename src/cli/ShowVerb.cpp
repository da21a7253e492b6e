#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "cli/Command.h"
#include "cli/InputFiles.h"
#include "cli/RunClock.h"
#include "cli/TerminalUser.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "print/PdfTarget.h"
#include "richtext/PlainText.h"
#include "richtext/PrintPages.h"
#include "richtext/ReadRichText.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {'o', "output", "FILE",
     "write here: pages where FILE ends in .pdf, else text; without it, text on standard output"},
    {0, "plain", "", "the text alone in one font, as the preview prints it (PDF)"},
    {0, "date", "DATE", "take this for today's date and time"},
    {0, "quiet", "", "no notes"},
};

// A page break is the end of a line for those who read a text.
std::string TextForFile(const richtext::Document& document) {
    std::string text = richtext::PlainText(document);
    std::erase(text, '\f');
    return text;
}

void WritePages(const richtext::Document& document, const std::filesystem::path& target, const Arguments& arguments) {
    const RunClock clock(arguments.Value("date"));
    TerminalUser user({.isQuiet = arguments.Has("quiet")});
    print::PdfSettings settings;
    settings.title = std::filesystem::path(arguments.Operands()[0]).stem().string();
    settings.created = clock.Now();
    const auto pdf = print::MakePdfTarget(target, settings);
    if (arguments.Has("plain"))
        richtext::PrintText(richtext::PlainText(document), *pdf);
    else
        richtext::PrintPages(document, *pdf);
    for (const std::string& note : pdf->FontSubstitutions()) user.Note(note);
}

ExitCode Show(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "FILE.RTF");
    const std::filesystem::path file = ExistingFile("file", arguments.Operands()[0], ErrorNumber::FileNotFound);
    const richtext::Document document = richtext::ReadRichTextFile(file);
    const std::filesystem::path target = TargetPath(arguments.Value("output").value_or("-"));
    ExpectOtherFile(target, file);
    if (EqualCaseBlind(target.extension().string(), ".pdf")) {
        WritePages(document, target, arguments);
        return ExitCode::Done;
    }
    if (arguments.Has("plain")) throw UsageError("--plain needs an output file that ends in .pdf");
    OutputFile out(target);
    out.Write(TextForFile(document));
    out.Commit();
    return ExitCode::Done;
}

}  // namespace

const Verb showVerb = {"show",
                       "FILE.RTF",
                       "Shows a rich text file, such as a report's screen preview, as PDF or as text.",
                       "The pages are those of the preview window.",
                       switches,
                       Show};

}  // namespace quillform::cli
