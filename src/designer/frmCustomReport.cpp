#include "designer/frmCustomReport.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <utility>

#include "designer/FontDialog.h"
#include "designer/FormatBar.h"
#include "designer/PrinterDialog.h"
#include "designer/RunPanel.h"
#include "designer/StatusLine.h"
#include "designer/SurfaceFrame.h"
#include "model/DesignGrid.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

constexpr int keyDelete = 46;
constexpr int keyEscape = 27;

}  // namespace

frmCustomReport::frmCustomReport(DesignerServices services, DesignerForms forms,
                                 std::optional<std::string> layoutAtStart)
    : services_(services),
      forms_(std::move(forms)),
      layoutAtStart_(std::move(layoutAtStart)),
      surface_(services_.layout, fonts_),
      formatting_(surface_),
      commands_(surface_, fonts_, services_.user, forms_.checkDatabase) {
    setObjectName(QStringLiteral("frmCustomReport"));
    MakeMenus();
    MakeParts();
    DisableMissing();
    surface_.onChange = [this] {
        frame_->Follow();
        if (!std::exchange(changesAreStale_, true)) QTimer::singleShot(200, this, &frmCustomReport::ShowChanges);
    };
    Form_Load();
}

frmCustomReport::~frmCustomReport() { surface_.onChange = {}; }

void frmCustomReport::Form_Load() {
    resize(sizeHint());
    SizeForm(*this);
    setWindowTitle(ToQt(commands_.Caption()));
    bar_->ShowOrientation(services_.printer.isLandscape);
    frame_->View().setFocus();
}

void frmCustomReport::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // After the form stands on the screen, because the check of the database may ask.
    if (!boolStarted_) QTimer::singleShot(0, this, &frmCustomReport::Form_Activate);
}

void frmCustomReport::Form_Activate() {
    if (std::exchange(boolStarted_, true)) return;
    services_.layout.InitReportModule();
    services_.layout.Fields.ClearAll();
    services_.layout.Queries.ClearAll();  // of a designer that was open before
    commands_.ClearLayout();
    if (layoutAtStart_) return AfterLayoutCommand(commands_.LoadLayout(*layoutAtStart_) ? IsLoaded::Yes : IsLoaded::No);
    if (forms_.checkDatabase) forms_.checkDatabase();
    AfterLayoutCommand();
    // Whoever left the designer without saving comes back to an empty page and looks for his work.
    if (const auto kept = commands_.KeptBefore(); !kept.empty())
        ShowKept(kept,
                 QFileInfo(ToQt(kept.string())).lastModified().toString(QStringLiteral(" of d MMMM yyyy, hh:mm,")));
}

void frmCustomReport::closeEvent(QCloseEvent* event) {
    if (isRunning_) {
        closesAfterRun_ = true;
        CanRptCmd_Click();
        event->ignore();
        return;
    }
    if (!commands_.KeepUnsaved()) {
        isExit_ = false;
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT Unloaded(isExit_);
}

void frmCustomReport::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) return Form_KeyDown(keyDelete);
    if (event->key() == Qt::Key_Escape) return Form_KeyPress(keyEscape);
    QMainWindow::keyPressEvent(event);
}

void frmCustomReport::Form_KeyDown(int keyCode) {
    if (keyCode != keyDelete || isRunning_) return;
    if (frame_->View().Editing().DeleteSelected()) ShowPointed(nullptr, std::nullopt);
}

void frmCustomReport::Form_KeyPress(int keyAscii) {
    if (keyAscii == keyEscape) boolCancelReport_ = true;
}

void frmCustomReport::File_Click(int index) {
    switch (index) {
        case 0:
            return AfterLayoutCommand(commands_.OpenLayout() ? IsLoaded::Yes : IsLoaded::No);
        case 1:
            commands_.SaveLayout();
            break;
        case 2:
            commands_.SaveAs();
            break;
        case 3:
            commands_.ClearLayout();
            break;
        case 4:
            commands_.DeleteLayout();
            break;
        case 6:
            return ProcessReport(OutputTypeOfOption(services_.layout.settings.intOutputType));
        case 7:
            return SetUpPrinter();
        case 9:
            isExit_ = true;
            close();
            return;
        default:
            return;
    }
    AfterLayoutCommand();
}

void frmCustomReport::AfterLayoutCommand(IsLoaded isLoaded) {
    setWindowTitle(ToQt(commands_.Caption()));
    // A new layout is in portrait and leaves the button as it was; a loaded one shows its own.
    if (isLoaded == IsLoaded::Yes) bar_->ShowOrientation(services_.layout.settings.intOrientation == 0);
    if (!surface_.SelectedItem()) ShowPointed(nullptr, std::nullopt);  // nothing of the layout before
    if (const auto kept = commands_.TakeKept(); !kept.empty()) ShowKept(kept, {});
    ShowChanges();
    if (forms_.showWarnings) forms_.showWarnings();
}

/// `when` is a part of the sentence.
void frmCustomReport::ShowKept(const std::filesystem::path& file, const QString& when) {
    statusBar()->showMessage(QStringLiteral("Unsaved changes%1 are kept in %2").arg(when, ToQt(DescribeFile(file))));
}

void frmCustomReport::Edt_Click(int index) {
    if (index == 0) return EditReportOptions();
    if (index == 1) return ShowForm(forms_.recordQuery);
    if (index == 2) EditFont();
}

void frmCustomReport::Ins_Click(int index) { ShowForm(index == 0 ? forms_.dataFields : forms_.textFields); }

void frmCustomReport::ShowForm(const DesignerForms::Form& form) {
    if (!form) return;
    form(*this, surface_);
    frame_->Follow();
    ShowChanges();
}

void frmCustomReport::SetUpPrinter() {
    PrinterDialog dialog(services_.listPrinters, services_.printer.printer, this);
    if (dialog.exec() == QDialog::Accepted) services_.printer.printer = dialog.Chosen();
}

void frmCustomReport::EditReportOptions() {
    const std::string database = services_.layout.settings.strDatabase[1];
    ShowForm(forms_.reportOptions);
    if (services_.layout.settings.strDatabase[1] != database && forms_.checkDatabase) forms_.checkDatabase();
    surface_.SetPageSize();
}

void frmCustomReport::EditFont() {
    const clssFields* const item = surface_.SelectedItem();
    if (surface_.intSelected < 1 || !item) {
        services_.user.Message("You must first select the data/text you want to edit the font for.");
        return;
    }
    if (const auto chosen = FontDialog::Choose(fonts_, FontOf(*item), this)) ApplyItemFont(*chosen);
}

void frmCustomReport::ApplyItemFont(const FontSpec& font) {
    if (!formatting_.ApplyItemFont(font)) return;
    boolUpdatingFont_ = true;
    ShowSelection();
    boolUpdatingFont_ = false;
}

void frmCustomReport::ColorPic_Click(int index) {
    if (!boolUpdatingFont_) formatting_.ColorPic_Click(index, bar_->Target());
}

void frmCustomReport::Toolbar2_ButtonClick(Alignment alignment) {
    if (!boolUpdatingFont_) formatting_.Toolbar2_ButtonClick(alignment);
}

void frmCustomReport::Toolbar3_ButtonClick(FontStyle style, bool isDown) {
    formatting_.Toolbar3_ButtonClick(style, isDown);
}

void frmCustomReport::Toolbar4_ButtonClick(bool isLandscape) {
    if (Picture1_->isVisible()) return;
    services_.printer.isLandscape = isLandscape;
    formatting_.Toolbar4_ButtonClick(isLandscape);
}

void frmCustomReport::ShowSelection() {
    const clssFields* const item = surface_.SelectedItem();
    if (!item) return;
    bar_->ShowFormat(*item);
    frame_->View().setAccessibleDescription(ToQt(
        DescribeItem(*item) + ". " + DescribePlace(static_cast<double>(item->Left), static_cast<double>(item->Top))));
}

void frmCustomReport::ShowPointed(const clssFields* item, std::optional<QPointF> place) {
    if (item) statusBar()->clearMessage();
    itemText_->setText(item ? ToQt(DescribeItem(*item)) : QString());
    placeText_->setText(place ? ToQt(DescribePlace(place->x(), place->y())) : QString());
}

void frmCustomReport::ShowChanges() {
    changesAreStale_ = false;
    changesText_->setText(commands_.HasChanges() ? QStringLiteral("Not saved") : QString());
}

}  // namespace quillform::designer
