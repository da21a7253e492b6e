// A report run from the form.

#include <QMenuBar>
#include <QStatusBar>
#include <memory>

#include "designer/FormatBar.h"
#include "designer/RunPanel.h"
#include "designer/StatusLine.h"
#include "designer/SurfaceFrame.h"
#include "designer/frmCustomReport.h"
#include "engine/ReportRun.h"
#include "output/OutputRooms.h"
#include "support/frmText.h"

namespace quillform::designer {

void frmCustomReport::EnableParts(bool isEnabled) {
    menuBar()->setEnabled(isEnabled);
    bar_->setEnabled(isEnabled);
    frame_->setEnabled(isEnabled);
    if (isEnabled) frame_->View().setFocus();
}

void frmCustomReport::ProcessReport(OutputType Flag) {
    if (isRunning_) return;
    isRunning_ = true;
    EnableParts(false);
    statusBar()->clearMessage();  // of the run before
    try {
        Run(Flag);
    } catch (const RunTimeError& error) {
        services_.user.Message(error.what());
    }
    Picture1_->hide();
    EnableParts(true);
    isRunning_ = false;
    ShowChanges();
    if (forms_.showWarnings) forms_.showWarnings();
    if (std::exchange(closesAfterRun_, false)) close();
}

void frmCustomReport::Run(OutputType type) {
    const bool hasOutput = Compose(type);
    if (type == OutputType::Screen && hasOutput && !closesAfterRun_) ShowScreenFile();
}

/// False if there is nothing to show: no items, or no file chosen.
bool frmCustomReport::Compose(OutputType type) {
    RunUser user(services_.user, *Picture1_, boolCancelReport_);
    const std::unique_ptr<Output> output = MakeOutput(type, {.printer = services_.printer.printer});
    ReportRun report(services_.layout, *output, {services_.engine, user, services_.clock, fonts_});
    const RunOutcome outcome = report.ProcessReport();
    if (outcome.failure) user.Message(outcome.failure->what(), {});
    if (outcome.end == RunEnd::NoPrimaryRow)
        user.Message("The primary sort field of the layout is no longer in the catalog.", {});
    if (outcome.end == RunEnd::Done && type != OutputType::Screen) ShowWhereabouts(output->File(), user.LastNote());
    return outcome.end != RunEnd::NoItems && outcome.end != RunEnd::TargetCancelled;
}

/// A report that is done tells where it went: to its file, or with a printer's `note`. The line stays until the next
/// item is pointed at.
void frmCustomReport::ShowWhereabouts(const std::filesystem::path& file, const std::string& note) {
    if (file.empty()) return statusBar()->showMessage(ToQt(note));
    statusBar()->showMessage(QStringLiteral("The report is in ") + ToQt(DescribeFile(file)));
}

void frmCustomReport::ShowScreenFile() {
    const std::string file = ScreenFileOf(services_.layout);
    if (forms_.preview)
        forms_.preview(*this, file);
    else
        services_.user.Message("The report is in the file " + file + ".");
}

}  // namespace quillform::designer
