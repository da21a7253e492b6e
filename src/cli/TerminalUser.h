#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include "model/UserInterface.h"

namespace quillform::cli {

/// The person at the terminal, or nobody: messages and warnings go to standard error, questions are answered by the
/// switches, files are named by the switches. Progress is shown on a terminal only.
class TerminalUser final : public UserInterface {
public:
    struct Choices {
        bool isQuiet = false;     ///< warnings, notes and progress are not shown
        bool answersYes = false;  ///< to every question; else No
    };
    explicit TerminalUser(Choices choices);

    void Message(std::string_view text, std::string_view title) override;
    bool Ask(std::string_view question, std::string_view title, MessageIcon icon) override;
    void Warn(std::string_view text) override;
    void Note(std::string_view text) override;
    void ShowPrintWindow(const std::string& file) override;
    void SetProgressMax(long long maximum) override { maximum_ = maximum; }
    void SetProgress(long long value) override;
    void HideProgress() override;
    bool YieldAndIsCancelled() override;

    /// What was warned of, for scripts that ask.
    const std::vector<std::string>& Warnings() const { return warnings_; }

private:
    Choices choices_;
    bool showsProgress_;
    bool hasProgressLine_ = false;
    long long maximum_ = 0;
    std::chrono::steady_clock::time_point lastShown_{};
    std::vector<std::string> warnings_;
};

/// Lets SIGINT, SIGTERM and SIGHUP end the work in an orderly way while it lives; a second signal ends it at once.
class InterruptGuard {
public:
    InterruptGuard();
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
    static bool IsInterrupted();
};

}  // namespace quillform::cli
