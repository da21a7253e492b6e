#include "output/TargetFile.h"

#include <system_error>

#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "support/SaveName.h"

namespace quillform {

std::optional<std::filesystem::path> ChooseTarget(const OutputTarget& target, const FileDialog& dialog,
                                                  UserInterface& user, Replacing replacing) {
    if (target.file) return TargetPath(*target.file);
    const std::optional<std::string> chosen = user.SaveDialog(dialog);
    if (!chosen) return std::nullopt;
    if (replacing == Replacing::AskLater) return TargetPath(SaveNameOf(*chosen));
    const auto name = NameToSave(*chosen, dialog.title, user);
    return name ? std::optional(TargetPath(*name)) : std::nullopt;
}

bool MayLeaveStoppedFile(const std::filesystem::path& path) {
    std::error_code ignored;  // a path that can't be looked at has no good file to lose
    return !std::filesystem::is_regular_file(path, ignored);
}

void WarnOfCharacters(const std::filesystem::path& file, std::size_t count, std::string_view which,
                      std::string_view fate, std::string_view fates, UserInterface& user) {
    if (count == 0) return;
    std::string sentence = "\"" + file.string() + "\": " + std::to_string(count);
    sentence.append(count == 1 ? " character" : " characters").append(which).append(" ");
    user.Warn(sentence.append(count == 1 ? fate : fates).append("."));
}

void WarnOfReplaced(const std::filesystem::path& file, std::size_t count, UserInterface& user) {
    WarnOfCharacters(file, count, " that the Windows character set 1252 lacks", "became \"?\"", "became \"?\"", user);
}

TargetFile::TargetFile(const std::filesystem::path& path, bool keepsStopped)
    : path_(path), mayLeaveStopped_(keepsStopped && MayLeaveStoppedFile(path)), file_(path) {}

void TargetFile::WriteLine(std::string_view utf8) {
    bytes_.clear();
    AppendCp1252(utf8, bytes_, &replaced_);
    bytes_ += "\r\n";
    file_.Write(bytes_);
}

void TargetFile::Finish(Ending ending) {
    if (ending == Ending::Whole || mayLeaveStopped_) file_.Commit();
}

}  // namespace quillform
