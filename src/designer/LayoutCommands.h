#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "designer/DesignSurface.h"
#include "model/UserInterface.h"

namespace quillform::designer {

/// The commands of the File menu that open, save and drop layouts. Nobody is asked about unsaved changes. So that none
/// is lost all the same, a layout that is dropped with changes in it is kept as "UNSAVED.REP" in the program's folder,
/// where the next one that is dropped replaces it.
class LayoutCommands {
public:
    /// All outlive the commands. `checkDatabase`, which may be empty, looks at the report database of a layout that is
    /// being loaded.
    LayoutCommands(DesignSurface& surface, TextMeasure& measure, UserInterface& user,
                   std::function<void()> checkDatabase);

    /// The form's caption: what layout is at hand.
    const std::string& Caption() const { return caption_; }
    /// Where a layout with changes was kept since the last call; empty if none was dropped.
    std::filesystem::path TakeKept() { return std::exchange(kept_, {}); }
    /// Where a layout with changes was kept at any time before; empty if there is none.
    std::filesystem::path KeptBefore() const;
    /// Whether the layout differs from what was last loaded or saved.
    bool HasChanges() const;

    /// Asks for a file and loads it. True if a layout was loaded.
    bool OpenLayout();
    /// Loads a layout. If there is no such file, the surface stays as it is, but the layout has the new name.
    bool LoadLayout(const std::string& fileName);
    /// Saves under the layout's name, and asks for one only where it has none.
    void SaveLayout();
    /// Asks for a name, takes it in capitals and saves; a file that has it in another case is replaced after a
    /// question.
    void SaveAs();
    /// The reset: the one that starts the program, and the command "New layout".
    void ClearLayout();
    /// Asks, removes the layout's file if it has one, and clears the surface. A file that can't be removed is told, and
    /// the layout stays.
    void DeleteLayout();
    /// For a layout that is dropped by closing the form. False if its changes can't be kept and the user, asked, would
    /// rather stay; then New and Open leave everything as it is, too.
    bool KeepUnsaved();

private:
    bool Save();
    void NoteSaved();
    std::filesystem::path KeptPath() const;

    DesignSurface& surface_;
    TextMeasure& measure_;
    UserInterface& user_;
    std::function<void()> checkDatabase_;
    std::string caption_;
    std::string saved_;  // the layout as it was last loaded or saved
    std::filesystem::path kept_;
};

}  // namespace quillform::designer
