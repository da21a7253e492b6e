#include "dialogs/QueryFileCommands.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "persistence/QueryFile.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "support/SaveName.h"

namespace quillform::dialogs {

namespace {

constexpr std::string_view folderName = "QUERIES";
constexpr std::string_view extension = ".QRY";
constexpr std::string_view where = "QUERY:LFileCmd_Click";  // of both commands

}  // namespace

QueryFileCommands::QueryFileCommands(UserInterface& user, const Clock& clock, std::string appPath,
                                     RunTimeErrors::Wait wait)
    : user_(user), appPath_(std::move(appPath)), errors_(user, clock, appPath_, std::move(wait)) {}

/// The folder is made with the first command: a dialog that is sent to a missing folder opens wherever it likes, and
/// the files of one user would end up in many places. If it can't be made, that is what happens.
FileDialog QueryFileCommands::Dialog(std::string title) const {
    const std::string files = appPath_ + std::string(folderName) + "\\*" + std::string(extension);
    std::error_code passedOver;
    std::filesystem::create_directories(TargetPath(files).parent_path(), passedOver);
    return {
        .title = std::move(title), .filter = "*.QRY", .fileName = {}, .defaultExtension = {}, .initialFolder = files};
}

StepEnd QueryFileCommands::Load(collQuery& lines) {
    FileDialog dialog = Dialog("Load Query...");
    dialog.fileName = "*.QRY";
    const auto chosen = user_.OpenDialog(dialog);
    if (!chosen) return StepEnd::Left;
    // The very file that was chosen comes before one whose name differs in case.
    if (!FindFile(*chosen)) {
        user_.Message("You've entered an invalid path or filename.");
        return StepEnd::Left;
    }
    bool isRefused = false;
    const StepEnd end = RunHandled(errors_, where, [&] {
        try {
            LoadQueries(*chosen, lines);
        } catch (const RunTimeError& error) {
            // A picture or a program was chosen by mistake: nothing to end the program for.
            if (error.Number() != ErrorNumber::InvalidFileFormat) throw;
            user_.Message(error.what());
            isRefused = true;
        }
    });
    return isRefused ? StepEnd::Left : end;
}

StepEnd QueryFileCommands::Save(const collQuery& lines) {
    FileDialog dialog = Dialog("Save Query As...");
    dialog.defaultExtension = "QRY";
    const auto chosen = user_.SaveDialog(dialog);
    if (!chosen) return StepEnd::Left;
    if (!UpperCase(*chosen).ends_with(extension)) {
        user_.Message("You must save the Query with an extension of .QRY");
        return StepEnd::Left;
    }
    const auto fileName = NameToSave(*chosen, dialog.title, user_);
    if (!fileName) return StepEnd::Left;
    SaveLosses losses;
    const StepEnd end = RunHandled(errors_, where, [&] { losses = SaveQueries(*fileName, lines); });
    for (const std::string& sentence : LossesInWords(*fileName, "a query file", losses)) user_.Message(sentence);
    return end;
}

}  // namespace quillform::dialogs
