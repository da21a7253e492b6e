#include "print/Printers.h"

#include <stdlib.h>

#include <system_error>
#include <utility>

#include "platform/RunTimeError.h"

namespace quillform::print {

namespace {

struct Reason {
    std::string_view keyword;  // without how bad it is
    std::string_view words;
};
constexpr std::string_view pausedWords = "paused";

// The keywords of the Internet Printing Protocol that printers of all kinds use, and those of the print service itself.
constexpr Reason reasons[] = {
    {"connecting-to-device", "connecting"},
    {"cover-open", "a cover is open"},
    {"cups-missing-filter", "its driver is incomplete"},
    {"cups-insecure-filter", "its driver is not safe to run"},
    {"door-open", "a door is open"},
    {"input-tray-missing", "a paper tray is missing"},
    {"interlock-open", "a door is open"},
    {"marker-supply-empty", "out of ink or toner"},
    {"marker-supply-low", "low on ink or toner"},
    {"media-empty", "out of paper"},
    {"media-jam", "paper jam"},
    {"media-low", "low on paper"},
    {"media-needed", "needs paper"},
    {"moving-to-paused", "pausing"},
    {"offline", "not reachable"},
    {"output-area-full", "the output tray is full"},
    {"paused", pausedWords},
    {"shutdown", "switched off"},
    {"spool-area-full", "out of room for jobs"},
    {"timed-out", "doesn't answer"},
    {"toner-empty", "out of toner"},
    {"toner-low", "low on toner"},
};

std::string_view WithoutSeverity(std::string_view keyword) {
    for (const std::string_view severity : {"-error", "-warning", "-report"})
        if (keyword.ends_with(severity)) return keyword.substr(0, keyword.size() - severity.size());
    return keyword;
}

}  // namespace

std::string ReasonInWords(std::string_view keyword) {
    keyword = WithoutSeverity(keyword);
    for (const Reason& reason : reasons)
        if (reason.keyword == keyword) return std::string(reason.words);
    std::string words(keyword);
    for (char& letter : words)
        if (letter == '-') letter = ' ';
    return words;
}

std::string StateInWords(const Printer& printer) {
    std::string words = "idle";
    if (printer.state == PrinterState::Printing) words = "printing";
    if (printer.state == PrinterState::Stopped) words = "stopped";
    // A printer that somebody stopped tells that it is paused, and one word is enough.
    for (const std::string& reason : printer.reasons)
        if (printer.state != PrinterState::Stopped || reason != pausedWords) words += ", " + reason;
    if (!printer.acceptsJobs) words += ", takes no jobs";
    return words;
}

SpoolFile::SpoolFile() {
    std::error_code error;
    std::string pattern = (std::filesystem::temp_directory_path(error) / "quillform-print-XXXXXX").string();
    if (error || mkdtemp(pattern.data()) == nullptr)
        throw RunTimeError(ErrorNumber::PathNotFound, "The folder for temporary files can't be written to.");
    folder_ = pattern;
}

SpoolFile::~SpoolFile() {
    std::error_code ignored;  // a file left in the folder for temporary files is the system's to clean up
    std::filesystem::remove_all(folder_, ignored);
}

}  // namespace quillform::print
