#include "designer/LayoutCommands.h"

#include <optional>
#include <system_error>
#include <utility>

#include "persistence/LayoutFile.h"
#include "platform/CodePage.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"
#include "support/SaveName.h"

namespace quillform::designer {

namespace {

constexpr std::string_view newCaption = "Report - UnTitled";
constexpr std::string_view namedCaption = "Custom Report - ";
constexpr std::string_view keptName = "UNSAVED.REP";
constexpr const char* saveTitle = "Save Report Layout as...";
constexpr std::string_view deleteQuestion = "ARE YOU SURE YOU WANT TO DELETE THIS REPORT LAYOUT FROM YOUR HARDDRIVE?";

FileDialog LayoutDialog(std::string title) {
    return {.title = std::move(title),
            .filter = "Text (*.REP)",
            .fileName = "*.REP",
            .defaultExtension = "REP",
            .initialFolder = {}};
}

}  // namespace

LayoutCommands::LayoutCommands(DesignSurface& surface, TextMeasure& measure, UserInterface& user,
                               std::function<void()> checkDatabase)
    : surface_(surface),
      measure_(measure),
      user_(user),
      checkDatabase_(std::move(checkDatabase)),
      caption_(newCaption),
      saved_(LayoutText(surface.Report())) {}

bool LayoutCommands::HasChanges() const { return LayoutText(surface_.Report()) != saved_; }

bool LayoutCommands::OpenLayout() {
    const auto chosen = user_.OpenDialog(LayoutDialog("Open Report Layout..."));
    return chosen && LoadLayout(NameToKeep(*chosen));
}

bool LayoutCommands::LoadLayout(const std::string& fileName) {
    Layout& layout = surface_.Report();
    const bool isThere = FindFile(fileName).has_value();
    if (isThere && !KeepUnsaved()) return false;
    const LoadOptions options{.checkDatabase =
                                  [this] {
                                      // What the check shows stands over the new page, not over the old one's pictures.
                                      surface_.ShowLayout();
                                      if (checkDatabase_) checkDatabase_();
                                  },
                              .problems = nullptr};
    try {
        if (!quillform::LoadLayout(fileName, layout, measure_, user_, options)) {
            layout.strLayoutFile = fileName;
            return false;
        }
    } catch (const RunTimeError& error) {
        user_.Message(error.what());
        return false;
    }
    caption_ = std::string(namedCaption) + fileName;
    surface_.ShowLayout();
    NoteSaved();
    return true;
}

void LayoutCommands::SaveLayout() {
    Layout& layout = surface_.Report();
    if (layout.strLayoutFile.empty()) {
        const auto chosen = user_.SaveDialog(LayoutDialog(saveTitle));
        if (!chosen) return;
        layout.strLayoutFile = *chosen;
    }
    Save();
}

void LayoutCommands::SaveAs() {
    const auto chosen = user_.SaveDialog(LayoutDialog(saveTitle));
    if (!chosen) return;
    const auto name = NameToSave(*chosen, saveTitle, user_);
    if (!name) return;
    surface_.Report().strLayoutFile = FindFile(*name) ? *name : NameToKeep(*name);
    if (Save()) caption_ = std::string(namedCaption) + UpperCase(*name);
}

bool LayoutCommands::Save() {
    const Layout& layout = surface_.Report();
    if (!quillform::SaveLayout(layout.strLayoutFile, layout, user_)) return false;
    caption_ = std::string(namedCaption) + layout.strLayoutFile;
    NoteSaved();
    return true;
}

void LayoutCommands::ClearLayout() {
    if (!KeepUnsaved()) return;
    surface_.ClearLayout();
    caption_ = newCaption;
    NoteSaved();
}

void LayoutCommands::DeleteLayout() {
    if (!user_.Ask(deleteQuestion, "WARNING", MessageIcon::Question)) return;
    const std::string& file = surface_.Report().strLayoutFile;
    std::error_code error;
    if (const auto found = file.empty() ? std::nullopt : FindFile(file)) std::filesystem::remove(found->path, error);
    if (error) {
        user_.Message("The report layout \"" + file + "\" can't be deleted: " + error.message() + ".");
        return;
    }
    NoteSaved();  // it is to go, changes and all
    ClearLayout();
}

std::filesystem::path LayoutCommands::KeptBefore() const {
    const std::filesystem::path path = KeptPath();
    std::error_code error;
    return std::filesystem::exists(path, error) ? path : std::filesystem::path();
}

std::filesystem::path LayoutCommands::KeptPath() const {
    return std::filesystem::path(surface_.Report().strAppPath) / keptName;
}

bool LayoutCommands::KeepUnsaved() {
    const Layout& layout = surface_.Report();
    if (layout.Fields.Count() + layout.Queries.Count() == 0 || !HasChanges()) return true;
    const std::filesystem::path path = KeptPath();
    try {
        OutputFile file(path);
        file.Write(Cp1252FromUtf8(LayoutText(layout)));
        file.Commit();
        kept_ = path;
        return true;
    } catch (const RunTimeError& error) {
        return user_.Ask("The layout's changes aren't saved and can't be kept.  " + std::string(error.what()) +
                             "  Go on without them?",
                         "Unsaved Changes", MessageIcon::Exclamation);
    }
}

void LayoutCommands::NoteSaved() { saved_ = LayoutText(surface_.Report()); }

}  // namespace quillform::designer
