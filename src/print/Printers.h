#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "print/PdfTarget.h"

namespace quillform::print {

enum class PrinterState { Idle, Printing, Stopped };

/// A printer of the system's print service.
struct Printer {
    std::string name;  ///< by which it is chosen; a named set of options is "Office/draft"
    std::string description;
    std::string location;
    bool isDefault = false;
    bool acceptsJobs = true;
    PrinterState state = PrinterState::Idle;
    std::vector<std::string> reasons;  ///< what it tells of itself, in words: "out of paper"
};

/// "idle", "printing", "stopped"; with what the printer tells of itself, and whether it takes no jobs:
/// "stopped, out of paper, takes no jobs".
std::string StateInWords(const Printer& printer);

/// A keyword of the print service in words: "media-empty-error" is "out of paper"; one that isn't known has its hyphens
/// as blanks.
std::string ReasonInWords(std::string_view keyword);

// What follows asks the print service, the one that the system's settings name. PrinterInformation, with a sentence, if
// it can't be reached or doesn't answer within some seconds, and in a program that was built without it. Nobody is
// asked for a password.

/// All printers, in the service's order.
std::vector<Printer> ListPrinters();

/// The printer of that name, the default printer for an empty name. PrinterInformation if there is none, with a
/// sentence that names those that there are; PrinterFailed if it takes no jobs.
Printer FindPrinter(std::string_view name);

struct JobSettings {
    std::string title;
    PaperSize paper;
    bool isLandscape = false;
    int copies = 1;
};

/// Hands a PDF file over as a job, in its own size: nothing is fitted to the page. Gives the job's number. The job is
/// there whole or not at all: a failure or `isCancelled`, asked between pieces of the file, withdraws it. PrinterFailed
/// if the printer refuses, DialogCancelled if cancelled.
int SendJob(const Printer& printer, const std::filesystem::path& pdf, const JobSettings& settings,
            const std::function<bool()>& isCancelled);

/// A file in a folder of its own that only this user can look into; both go with it. What is printed waits here.
class SpoolFile {
public:
    SpoolFile();
    ~SpoolFile();
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;
    std::filesystem::path Path() const { return folder_ / "report.pdf"; }

private:
    std::filesystem::path folder_;
};

}  // namespace quillform::print
