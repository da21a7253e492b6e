#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "ScratchFolder.h"
#include "platform/Dates.h"
#include "platform/OutputFile.h"
#include "support/Delay.h"
#include "support/ErrorHandler.h"
#include "support/ErrorLog.h"

namespace quillform {
namespace {

using Lines = std::vector<std::string>;

/// Writes down what is told, and answers Retry or Cancel.
class ListeningUser final : public UserInterface {
public:
    void Message(std::string_view text, std::string_view title) override {
        told.push_back(std::string(text) + "|" + std::string(title));
    }
    void MessageWithIcon(std::string_view text, std::string_view title, MessageIcon icon) override {
        told.push_back(std::string(text) + "|" + std::string(title) + (icon == MessageIcon::Exclamation ? "|!" : "|"));
    }
    bool AskRetry(std::string_view text, std::string_view title, MessageIcon icon) override {
        told.push_back(std::string(text) + "|" + std::string(title) + (icon == MessageIcon::Question ? "|?" : "|"));
        return retries;
    }
    void Beep() override { told.emplace_back("beep"); }
    bool Ask(std::string_view, std::string_view, MessageIcon) override { return false; }
    void Warn(std::string_view) override {}

    bool retries = false;
    Lines told;
};

class ErrorHandlerTest : public ::testing::Test {
protected:
    std::filesystem::path Log() const { return folder_ / "ERROR.LOG"; }

    ScratchFolder folder_;
    FixedClock clock_{DateSerial(1998, 3, 7) + TimeSerial(9, 5, 2)};
    ListeningUser user_;
    int waited_ = 0;
    RunTimeErrors errors_{user_, clock_, folder_.Path(), [this](std::int32_t seconds) { waited_ += seconds; }};
};

TEST_F(ErrorHandlerTest, EachNumberHasItsResult) {
    struct Case {
        int number;
        bool retries;
        int result;
        Lines told;
        int waited;
    };
    const Case cases[] = {
        {52, false, 2, {}, 0},
        {53, false, 2, {"Could not find file!|DISK ERROR|!"}, 0},
        {91, false, 1, {}, 0},
        {94, false, 1, {}, 0},
        {3022, false, 3, {"This indexed field does not allow duplicates.|ERROR|!"}, 0},
        {3260, true, 0, {"This file or record is currently in use.|NETWORK|?"}, 2},
        {3260, false, 2, {"This file or record is currently in use.|NETWORK|?"}, 0},
        {11,
         false,
         4,
         {"beep",
          "The following Error occurred:\r\n\r\nError: What failed.\r\nError Number: 11\r\nIn Procedure: "
          "QUERY:LFileCmd_Click\r\n(or a subsequent call from this procedure)\r\n\r\nNOTE: This error appended to "
          "error log file|********** SYSTEM ERROR **********|!"},
         0},
    };
    for (const Case& example : cases) {
        user_.told.clear();
        user_.retries = example.retries;
        waited_ = 0;
        const RunTimeError error(static_cast<ErrorNumber>(example.number), "What failed.");
        EXPECT_EQ(static_cast<int>(errors_.ErrorHandler(error, "QUERY:LFileCmd_Click")), example.result);
        EXPECT_EQ(user_.told, example.told) << example.number;
        EXPECT_EQ(waited_, example.waited) << example.number;
        EXPECT_EQ(std::filesystem::exists(Log()), example.result == 4) << example.number;
    }
}

TEST_F(ErrorHandlerTest, EntriesAreAppendedToTheByte) {
    errors_.LogError("FORM:Load", "Caf\xC3\xA9 isn't\r\nthere.", 76);
    errors_.LogError("", "", -1);
    EXPECT_EQ(ReadWholeFile(Log()),
              "ERROR NAME: Caf\xE9 isn't  there.\r\nERROR NUMBER: 76\r\nWHEN: 03-07-1998  09:05:02\r\n"
              "WHERE: FORM:Load\r\n==================================\r\n"
              "ERROR NAME: \r\nERROR NUMBER: -1\r\nWHEN: 03-07-1998  09:05:02\r\n"
              "WHERE: \r\n==================================\r\n");
    EXPECT_EQ(waited_, 0);
}

/// Another process that holds the log from before this returns until it is told to let go.
class OtherUser {
public:
    explicit OtherUser(const std::filesystem::path& log) {
        int ready[2];
        if (pipe(ready) != 0 || pipe(letGo_) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ == 0) {
            const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
            const bool isLocked = flock(file, LOCK_EX) == 0;
            char byte = isLocked ? 'y' : 'n';
            close(letGo_[1]);
            if (write(ready[1], &byte, 1) != 1) _exit(2);
            while (read(letGo_[0], &byte, 1) > 0) continue;
            _exit(write(file, "other\r\n", 7) == 7 ? 0 : 1);
        }
        char byte = 0;
        if (read(ready[0], &byte, 1) != 1 || byte != 'y') throw std::runtime_error("the log isn't locked");
        close(ready[0]);
        close(ready[1]);
        close(letGo_[0]);
    }
    ~OtherUser() { LetGo(); }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

    /// Returns when the other process has written and ended.
    void LetGo() {
        if (child_ <= 0) return;
        close(letGo_[1]);
        int status = -1;
        waitpid(child_, &status, 0);
        EXPECT_EQ(status, 0);
        child_ = 0;
    }

private:
    int letGo_[2] = {-1, -1};
    pid_t child_ = 0;
};

TEST_F(ErrorHandlerTest, ALogInUseIsWaitedForThreeTimes) {
    OtherUser other(Log());
    errors_.LogError("A", "B", 5);
    EXPECT_EQ(waited_, 6);
    EXPECT_EQ(user_.told.back(), "Could not update ERROR.LOG|");
    EXPECT_EQ(ReadWholeFile(Log()), "");
}

TEST_F(ErrorHandlerTest, ASecondUserWaitsAndThenWrites) {
    OtherUser other(Log());
    int waits = 0;
    RunTimeErrors errors(user_, clock_, folder_.Path(), [&](std::int32_t) {
        if (++waits == 2) other.LetGo();
    });
    errors.LogError("A", "B", 5);
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(user_.told.size(), 2U);  // the beep and the error itself
    const std::string log = ReadWholeFile(Log());
    EXPECT_TRUE(log.starts_with("other\r\nERROR NAME: B\r\n")) << log;
}

TEST_F(ErrorHandlerTest, ALogThatCannotBeWrittenIsTold) {
    RunTimeErrors nowhere(user_, clock_, folder_ / "missing", [](std::int32_t) { FAIL() << "waiting is of no use"; });
    nowhere.LogError("A", "B", 5);
    EXPECT_EQ(user_.told.back(), "Could not open ERROR.LOG|");

    std::filesystem::create_directory(Log());
    errors_.LogError("A", "B", 5);
    EXPECT_EQ(user_.told.back(),
              "Error while writing ERROR.LOG\r\nERROR :\"" + Log().string() + "\" can't be written: Is a directory.|");
    EXPECT_EQ(waited_, 0);
}

/// Its timer goes on while somebody sleeps, by less than was asked for.
class SleepingClock final : public Clock {
public:
    explicit SleepingClock(double start) : timer_(start) {}
    double Now() const override { return 0; }
    double Timer() const override { return timer_; }
    void Sleep(double seconds) { timer_ += seconds > 0.5 ? seconds / 2 : seconds; }

private:
    double timer_;
};

TEST(Delay, CountsFromTheNearestWholeSecond) {
    struct Case {
        double start;
        std::int32_t seconds;
        double end;
    };
    const Case cases[] = {{100, 2, 102}, {100.25, 2, 102}, {100.75, 2, 103}, {86399, 2, 86401}, {5, 0, 5}, {5, -1, 5}};
    for (const Case& example : cases) {
        SleepingClock clock(example.start);
        Delay(example.seconds, clock, [&](double seconds) { clock.Sleep(seconds); });
        EXPECT_DOUBLE_EQ(clock.Timer(), example.end) << example.start;
    }
}

}  // namespace
}  // namespace quillform
