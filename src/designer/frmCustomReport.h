#pragma once

#include <QMainWindow>
#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "designer/DesignerForms.h"
#include "designer/ItemFormatting.h"
#include "designer/LayoutCommands.h"
#include "designer/ScreenFonts.h"
#include "model/ReportSettings.h"

class QAction;
class QLabel;

namespace quillform::designer {

class FormatBar;
class RunPanel;
class SurfaceFrame;

/// The main form of the designer: menus, toolbars, the design surface, the progress panel. Controls and menu entries
/// carry their given names as object names: "File_0" is the entry 0 of the menu File.
///
/// Reports for the printer go into a PDF file until a printer is chosen in "Printer Setup".
///
/// Nobody is asked about unsaved changes; see LayoutCommands for what becomes of them. While a report runs, only the
/// panel's button and Esc do something; closing the form then cancels the report first.
class frmCustomReport : public QMainWindow {
    Q_OBJECT

public:
    /// `layoutAtStart`, where given, is opened at the first activation, in place of a new layout.
    frmCustomReport(DesignerServices services, DesignerForms forms, std::optional<std::string> layoutAtStart = {});
    ~frmCustomReport() override;

    DesignSurface& Surface() { return surface_; }
    SurfaceFrame& Frame() { return *frame_; }

Q_SIGNALS:
    /// The form is closed: by "Exit" (the start form is wanted) or otherwise (the program ends).
    void Unloaded(bool byExit);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr int fileEntries = 10;
    static constexpr int editEntries = 3;
    static constexpr int insertEntries = 2;

    // Layout of the form (frmCustomReportLayout.cpp)
    void MakeMenus();
    QAction* MakeEntry(QMenu& menu, const char* array, int index, const char* caption, const char* shortcut,
                       const char* toolTip);
    void MakeParts();
    void MakeStatusLine();
    void DisableMissing();

    void Form_Load();
    void Form_Activate();
    void Form_KeyDown(int keyCode);
    void Form_KeyPress(int keyAscii);

    void File_Click(int index);
    void Edt_Click(int index);
    void Ins_Click(int index);
    void CanRptCmd_Click() { boolCancelReport_ = true; }
    void ColorPic_Click(int index);
    void Toolbar2_ButtonClick(Alignment alignment);
    void Toolbar3_ButtonClick(FontStyle style, bool isDown);
    void Toolbar4_ButtonClick(bool isLandscape);
    void ApplyItemFont(const FontSpec& font);

    void ProcessReport(OutputType Flag);
    void Run(OutputType type);
    bool Compose(OutputType type);
    void ShowWhereabouts(const std::filesystem::path& file, const std::string& note);
    void ShowScreenFile();
    void EnableParts(bool isEnabled);
    void EditReportOptions();
    void SetUpPrinter();
    void EditFont();
    void ShowForm(const DesignerForms::Form& form);
    enum class IsLoaded { No, Yes };
    void AfterLayoutCommand(IsLoaded isLoaded = IsLoaded::No);
    void ShowKept(const std::filesystem::path& file, const QString& when);
    void ShowSelection();
    void ShowPointed(const clssFields* item, std::optional<QPointF> place);
    void ShowChanges();

    DesignerServices services_;
    DesignerForms forms_;
    std::optional<std::string> layoutAtStart_;
    ScreenFonts fonts_;
    DesignSurface surface_;
    ItemFormatting formatting_;
    LayoutCommands commands_;

    bool boolStarted_ = false;
    bool boolCancelReport_ = false;
    bool boolUpdatingFont_ = false;
    bool isRunning_ = false;
    bool closesAfterRun_ = false;
    bool isExit_ = false;
    bool changesAreStale_ = false;

    // Owned by the form.
    std::array<QAction*, fileEntries> File_{};
    std::array<QAction*, editEntries> Edt_{};
    std::array<QAction*, insertEntries> Ins_{};
    FormatBar* bar_ = nullptr;
    SurfaceFrame* frame_ = nullptr;
    RunPanel* Picture1_ = nullptr;
    QLabel* itemText_ = nullptr;
    QLabel* changesText_ = nullptr;
    QLabel* placeText_ = nullptr;
};

}  // namespace quillform::designer
