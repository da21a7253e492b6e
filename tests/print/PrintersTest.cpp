#include <gtest/gtest.h>

#include "print/Printers.h"

namespace quillform::print {
namespace {

TEST(Printers, TellTheirStateInWords) {
    struct Case {
        PrinterState state;
        bool acceptsJobs;
        std::vector<std::string> keywords;
        std::string_view words;
    };
    const Case cases[] = {
        {PrinterState::Idle, true, {}, "idle"},
        {PrinterState::Printing, true, {"toner-low-warning"}, "printing, low on toner"},
        {PrinterState::Stopped, true, {"media-empty-error", "paused"}, "stopped, out of paper"},
        {PrinterState::Stopped, false, {"offline-report"}, "stopped, not reachable, takes no jobs"},
        {PrinterState::Printing, true, {"paused"}, "printing, paused"},
        {PrinterState::Idle, true, {"com.maker-odd-thing-warning"}, "idle, com.maker odd thing"},
        {PrinterState::Idle, true, {"-error"}, "idle, "},
    };
    for (const Case& c : cases) {
        Printer printer;
        printer.acceptsJobs = c.acceptsJobs;
        printer.state = c.state;
        for (const std::string& keyword : c.keywords) printer.reasons.push_back(ReasonInWords(keyword));
        EXPECT_EQ(StateInWords(printer), c.words);
    }
}

TEST(Printers, SpoolFilesAreTheUsersOwnAndGoAway) {
    std::filesystem::path folder;
    {
        const SpoolFile file;
        folder = file.Path().parent_path();
        EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace quillform::print
