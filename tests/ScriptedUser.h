#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/UserInterface.h"

namespace quillform {

/// Answers as the test has written them down before.
class ScriptedUser final : public UserInterface {
public:
    void Message(std::string_view text, std::string_view) override { messages.emplace_back(text); }
    bool Ask(std::string_view question, std::string_view title, MessageIcon) override {
        questions.emplace_back(question);
        questionTitle = title;
        return answer;
    }
    bool AskRetry(std::string_view, std::string_view, MessageIcon) override { return retries; }
    void Warn(std::string_view text) override { warnings.emplace_back(text); }
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override { return Choose(dialog); }
    std::optional<std::string> OpenDialog(const FileDialog& dialog) override { return Choose(dialog); }

    std::optional<std::string> chosen;  ///< in the next file dialogs; empty is a cancel
    bool answer = false;
    bool retries = false;
    std::vector<std::string> messages, questions, warnings, titles;
    std::string questionTitle;  ///< of the last one
    FileDialog lastDialog;      ///< the last one

private:
    std::optional<std::string> Choose(const FileDialog& asked) {
        lastDialog = asked;
        titles.push_back(asked.title);
        return chosen;
    }
};

}  // namespace quillform
