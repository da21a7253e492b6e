#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillform {

enum class MessageIcon { None, Question, Exclamation };

/// What a save or open dialog of the described system is set to. `filter` is pairs of text and pattern, "|" between
/// them.
struct FileDialog {
    std::string title;
    std::string filter;
    std::string fileName;
    std::string defaultExtension;
    std::string initialFolder;
};

/// Everything that a run or a check wants of the person before it. The command answers from its switches, the windows
/// ask, the tests are scripted.
class UserInterface {
public:
    virtual ~UserInterface() = default;

    /// A box with one OK button.
    virtual void Message(std::string_view text, std::string_view title = {}) = 0;
    /// The same with an icon, which means something to windows only.
    virtual void MessageWithIcon(std::string_view text, std::string_view title, MessageIcon) { Message(text, title); }
    virtual void Beep() {}
    /// A Yes and No box. With MessageIcon::Exclamation a Yes may lose something, and No is what Enter gives.
    virtual bool Ask(std::string_view question, std::string_view title, MessageIcon icon = MessageIcon::Question) = 0;
    /// A Retry and Cancel box; true is Retry. Where nobody can be asked, a retry would never end, so it is Cancel.
    virtual bool AskRetry(std::string_view, std::string_view, MessageIcon = MessageIcon::Question) { return false; }
    /// Something the user should know that is no message of the described system: a font replaced, a path substituted,
    /// a character that the file can't hold. Never stops the work.
    virtual void Warn(std::string_view text) = 0;
    /// Something that is as it should be and yet good to know, such as a font drawn by its metric twin.
    virtual void Note(std::string_view) {}

    /// The chosen path, or empty when the user cancelled; where nobody can choose, that too.
    virtual std::optional<std::string> SaveDialog(const FileDialog&) { return std::nullopt; }
    virtual std::optional<std::string> OpenDialog(const FileDialog&) { return std::nullopt; }

    /// Shows the finished file of the screen output, and comes back when the user has seen enough.
    virtual void ShowPrintWindow(const std::string&) {}

    // The progress panel: shown with 0 of 0, then told its maximum, then its value. Where nobody looks there is none.
    virtual void ShowProgress() {}
    virtual void SetProgressMax(long long) {}
    virtual void SetProgress(long long) {}
    virtual void HideProgress() {}
    /// Lets pending events run, at most every few milliseconds. True if the run is to be cancelled. Called once a
    /// record, so it must be cheap.
    virtual bool YieldAndIsCancelled() { return false; }
};

}  // namespace quillform
