// Reports on printers: the program hands its jobs to a print service that the test runs itself.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>

#include "endtoend/PrintScheduler.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

constexpr int targetFailed = 7;

class Printer : public testing::Test {
protected:
    void Start(PrintScheduler::Default isDefault = PrintScheduler::Default::Office) {
        if (!PrintScheduler::IsInstalled()) GTEST_SKIP() << "the print service's program cupsd isn't installed";
        const Outcome made = Quillform({"sample", folder_.Path().string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
        scheduler_.emplace(isDefault);
        ASSERT_TRUE(scheduler_->IsRunning());
        if (Quillform({"--list-printers"}).errors.find("built without") != std::string::npos)
            GTEST_SKIP() << "the program was built without the print service";
    }
    Outcome Run(const std::string& report, const std::vector<std::string>& switches) {
        std::vector<std::string> arguments = {"run", folder_.File(report + ".REP"), "--walk", "one-pass"};
        arguments.insert(arguments.end(), switches.begin(), switches.end());
        return Quillform(arguments);
    }

    ScratchFolder folder_;
    std::optional<PrintScheduler> scheduler_;
};

#define START_SCHEDULER(...) \
    Start(__VA_ARGS__);      \
    if (IsSkipped() || HasFatalFailure()) return

TEST_F(Printer, GetsTheSameFileAsTheDiskWithTitlePaperAndOrientation) {
    START_SCHEDULER();
    struct Case {
        const char* report;
        std::vector<std::string> page;      // switches that change the page
        std::vector<std::string> printing;  // and those that don't
        const char* media;
        const char* orientation;  // 3 upright, 4 across
        const char* copies = "1";
    };
    const Case cases[] = {
        {"STOCK", {}, {"--type", "printer"}, "na_letter_8.5x11in", "3"},
        {"SALES", {}, {"--printer", "Office", "--copies", "3"}, "na_letter_8.5x11in", "4", "3"},
        {"STOCK", {"--paper", "5"}, {"--copies", "2"}, "na_legal_8.5x14in", "3", "2"},
        {"STOCK", {"--paper", "7"}, {"-t", "PRINTER"}, "custom_7.5x10.5in_7.5x10.5in", "3"},
        {"PRICES", {"--paper", "20", "--orientation", "landscape"}, {"-t", "printer"}, "na_number-10_4.125x9.5in", "4"},
        // Wider than high as they are: media are named upright.
        {"STOCK", {"--paper", "4"}, {"-t", "printer"}, "na_ledger_11x17in", "4"},
        {"STOCK", {"--paper", "4", "--orientation", "landscape"}, {"-t", "printer"}, "na_ledger_11x17in", "3"},
        {"STOCK", {"--paper", "39"}, {"-t", "printer"}, "na_fanfold-us_11x14.875in", "4"},
    };
    int number = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.report) + " as job " + std::to_string(++number));
        std::vector<std::string> switches = c.page;
        switches.insert(switches.end(), c.printing.begin(), c.printing.end());
        const Outcome run = Run(c.report, switches);
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_NE(run.errors.find("\"Office\" as job " + std::to_string(number)), std::string::npos) << run.errors;

        switches = c.page;
        switches.insert(switches.end(), {"-o", folder_.File("page.pdf")});
        ASSERT_EQ(Run(c.report, switches).exitCode, 0);
        const PrintScheduler::Job job = scheduler_->Printed(number);
        EXPECT_TRUE(job.document == ReadFile(folder_ / "page.pdf")) << job.document.size() << " bytes arrived";
        EXPECT_EQ(job.title, c.report);
        EXPECT_EQ(job.copies, c.copies);
        for (const std::string& option :
             {std::string("media=") + c.media, std::string("orientation-requested=") + c.orientation,
              std::string("print-scaling=none")})
            EXPECT_NE((" " + job.options + " ").find(" " + option + " "), std::string::npos) << job.options;
    }
}

TEST_F(Printer, AreListedWithDefaultAndState) {
    START_SCHEDULER();
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--list-printers"}, {"run", "--list-printers"}}) {
        const Outcome listed = Quillform(words);
        EXPECT_EQ(listed.exitCode, 0) << listed.errors;
        EXPECT_EQ(listed.output,
                  "Closed              idle, takes no jobs\n"
                  "Office   (default)  idle                   Second floor, Hall\n"
                  "Stopped             stopped, out of paper\n");
    }
    EXPECT_EQ(Lines(Quillform({"--list-printers", "--json"}).output).at(2),
              "{\"name\": \"Office\", \"default\": true, \"state\": \"idle\", \"takes jobs\": true, \"description\": "
              "\"Second floor\", \"location\": \"Hall\"},");
}

TEST_F(Printer, ThatCannotBeUsedIsRefusedWithTheOnesThatAreThere) {
    START_SCHEDULER(PrintScheduler::Default::None);
    struct Case {
        std::vector<std::string> switches;
        int exitCode;
        const char* sentence;
    };
    const Case cases[] = {
        {{"-t", "printer"},
         targetFailed,
         "No printer is the default; name one of these: \"Closed\", \"Office\", \"Stopped\"."},
        {{"--printer", "Offices"},
         targetFailed,
         "There is no printer \"Offices\"; these are there: \"Closed\", \"Office\""},
        {{"--printer", "Closed"}, targetFailed, "\"Closed\" takes no jobs at the moment"},
        {{"--printer", "Office", "-o", "x.pdf"}, 2, "to a printer or to a file"},
        {{"--printer", "Office", "-t", "txt"}, 2, "go with the output type printer"},
        {{"--printer", "Office", "--copies", "0"}, 2, "--copies takes a number from 1 to 999"},
        {{"--printer", "Office", "--copies", "2x"}, 2, "--copies takes a number from 1 to 999"},
    };
    for (const Case& c : cases) {
        const Outcome run = Run("STOCK", c.switches);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.errors;
        EXPECT_NE(run.errors.find(c.sentence), std::string::npos) << run.errors;
    }
    EXPECT_EQ(scheduler_->Received(), 0U);
}

TEST_F(Printer, ThatStandsStillKeepsTheReportAndSaysSo) {
    START_SCHEDULER();
    const Outcome run = Run("STOCK", {"--printer", "Stopped"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_NE(run.errors.find("\"Stopped\" prints nothing just now (stopped, out of paper)"), std::string::npos)
        << run.errors;
    EXPECT_EQ(scheduler_->Received(), 1U);
}

TEST_F(Printer, GetsNothingOfAReportThatFailsOrHasNoRecords) {
    START_SCHEDULER();
    const std::string layout = ReadFile(folder_ / "STOCK.REP");
    const auto runWith = [&](const std::string& line) {
        // Lines of conditions stand before the line of settings.
        std::string changed = layout;
        changed.insert(changed.find("\n*") + 1, line + "\r\n");
        WriteFile(folder_ / "CHANGED.REP", changed);
        return Run("CHANGED", {"--printer", "Office", "--keep-partial"}).exitCode;
    };
    EXPECT_EQ(runWith("& 3,\"Stock Code\",\"none like it\",\"=\",\"AND\""), 3);
    EXPECT_NE(runWith("& 3,\"Stock Code\",\"it's\",\"=\",\"AND\""), 0);
    EXPECT_EQ(scheduler_->Received(), 0U);
}

/// A service that takes connections and never answers.
class SilentService {
public:
    SilentService() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string file = folder_.File("socket");
        file.copy(address.sun_path, sizeof address.sun_path - 1);
        socket_ = socket(AF_UNIX, SOCK_STREAM, 0);
        if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 || listen(socket_, 8) != 0)
            throw std::runtime_error("no socket");
        setenv("CUPS_SERVER", file.c_str(), 1);
    }
    ~SilentService() {
        close(socket_);
        unsetenv("CUPS_SERVER");
    }

private:
    ScratchFolder folder_;
    int socket_ = -1;
};

TEST(PrintService, ThatDoesNotAnswerEndsInASentence) {
    const SilentService service;
    const Outcome listed = Quillform({"--list-printers"});  // ended by force after a minute
    EXPECT_EQ(listed.exitCode, targetFailed);
    EXPECT_TRUE(listed.errors.find("doesn't answer") != std::string::npos ||
                listed.errors.find("built without") != std::string::npos)
        << listed.errors;
}

TEST(PrintService, ThatIsNotThereEndsInASentence) {
    setenv("CUPS_SERVER", "/no/such/socket", 1);
    const Outcome listed = Quillform({"run", "--list-printers"});
    unsetenv("CUPS_SERVER");
    EXPECT_EQ(listed.exitCode, targetFailed);
    EXPECT_TRUE(listed.errors.find("can't be reached") != std::string::npos ||
                listed.errors.find("built without") != std::string::npos)
        << listed.errors;
}

}  // namespace
}  // namespace endtoend
