#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/Output.h"
#include "output/OutputRooms.h"
#include "platform/OutputFile.h"

namespace quillform {

/// Who asks before a file that the dialog didn't ask about is replaced.
enum class Replacing { AskHere, AskLater };

/// The path an output goes to: the named one, or the file that the user's answer to the dialog stands for. Empty on
/// cancel, and where a file is to stay.
std::optional<std::filesystem::path> ChooseTarget(const OutputTarget& target, const FileDialog& dialog,
                                                  UserInterface& user, Replacing replacing = Replacing::AskHere);

/// A text file of single-byte characters with lines that end in carriage return and line feed.
class TargetFile {
public:
    TargetFile(const std::filesystem::path& path, bool keepsStopped);

    void WriteLine(std::string_view utf8);
    /// Ends the file. A stopped run's file doesn't take the place of one that stood there before the run: a whole
    /// report of yesterday is worth more than half of one.
    void Finish(Ending ending);
    /// Characters that the character set lacks and that were replaced so far.
    std::size_t Replaced() const { return replaced_; }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
    bool mayLeaveStopped_;
    OutputFile file_;
    std::string bytes_;
    std::size_t replaced_ = 0;
};

/// Tells the user what became of `count` characters of a file, if any: "FILE": 3 characters `which` `fates`.
void WarnOfCharacters(const std::filesystem::path& file, std::size_t count, std::string_view which,
                      std::string_view fate, std::string_view fates, UserInterface& user);
/// Tells the user how many characters of a file the character set lacks and were replaced, if any.
void WarnOfReplaced(const std::filesystem::path& file, std::size_t count, UserInterface& user);
inline void WarnOfReplaced(const TargetFile& file, UserInterface& user) {
    WarnOfReplaced(file.Path(), file.Replaced(), user);
}

/// Whether a stopped run may leave its file at `path`.
bool MayLeaveStoppedFile(const std::filesystem::path& path);

}  // namespace quillform
