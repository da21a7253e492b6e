#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "desktop/ProgressPanel.h"
#include "model/UserInterface.h"

namespace quillform {

/// The person before the windows: messages and questions are boxes over the active window, files are chosen in the
/// desktop's own dialogs, progress has a panel. Warnings are collected and shown together when the work is done.
class DesktopUser final : public UserInterface {
public:
    DesktopUser() = default;

    void Message(std::string_view text, std::string_view title) override;
    void MessageWithIcon(std::string_view text, std::string_view title, MessageIcon icon) override;
    void Beep() override;
    bool Ask(std::string_view question, std::string_view title, MessageIcon icon) override;
    bool AskRetry(std::string_view question, std::string_view title, MessageIcon icon) override;
    void Warn(std::string_view text) override;
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override;
    std::optional<std::string> OpenDialog(const FileDialog& dialog) override;
    void ShowProgress() override;
    void SetProgressMax(long long maximum) override { panel_.SetMaximum(maximum); }
    void SetProgress(long long value) override { panel_.SetValue(value); }
    void HideProgress() override { panel_.hide(); }
    bool YieldAndIsCancelled() override;

    /// What was warned of and not shown yet.
    const std::vector<std::string>& Warnings() const { return warnings_; }
    /// One box with all of it, then nothing is left; no box if there is nothing.
    void ShowWarnings();

private:
    ProgressPanel panel_;
    std::vector<std::string> warnings_;
    std::chrono::steady_clock::time_point lastYield_{};
};

}  // namespace quillform
