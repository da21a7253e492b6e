#include "desktop/DesignerProgram.h"

#include <QEventLoop>
#include <QTimer>
#include <filesystem>
#include <utility>

#include "data/Engine.h"
#include "designer/SurfaceForms.h"
#include "designer/frmCustomReport.h"
#include "desktop/Configuration.h"
#include "desktop/DialogForms.h"
#include "dialogs/TellFailure.h"
#include "dialogs/frmStockCodeTable.h"
#include "engine/ReportRun.h"
#include "platform/Paths.h"
#include "sample/SampleData.h"

namespace quillform {

namespace {

/// Of the start form; another machine finds the file by its name, as it does with the paths of layouts.
constexpr std::string_view samplePath = "C:\\reptest\\Sample.mdb";

/// Where the sample isn't, the path at which it is missed.
std::string PathOfSample(const Layout& layout) {
    const std::optional<ResolvedPath> found = FindFile(samplePath, {layout.strAppPath});
    return found ? found->path.string() : layout.strAppPath + std::string(FileNameOf(samplePath));
}

/// A new layout reports on the sample database, so it is made where it is missing.
void MakeSamplesOnce(const Layout& layout, DBEngine& engine, UserInterface& user) {
    if (FindFile(layout.settings.strDatabase[1])) return;
    try {
        sample::WriteSamples(engine, layout.strAppPath);
    } catch (const RunTimeError& error) {
        user.Warn("The sample database can't be made.  " + std::string(error.what()));
    }
}

/// The caption names the layout by its whole path, whatever folder the program was started in.
std::optional<std::string> WholePath(const std::optional<std::string>& layoutFile) {
    if (!layoutFile) return std::nullopt;
    const std::optional<ResolvedPath> found = FindFile(*layoutFile);
    if (!found) return layoutFile;
    return std::filesystem::absolute(found->path).lexically_normal().string();
}

}  // namespace

DesignerProgram::DesignerProgram(Services services) : services_(std::move(services)) {
    layout_.InitReportModule();
    layout_.ClearLayout();
}

DesignerProgram::~DesignerProgram() = default;

void DesignerProgram::Start(const std::optional<std::string>& layoutFile) {
    MakeSamplesOnce(layout_, services_.engine, services_.user);
    if (services_.showWarnings) services_.showWarnings();
    if (layoutFile)
        ShowDesigner(WholePath(layoutFile));
    else
        ShowStartForm();
}

void DesignerProgram::ShowStartForm() {
    auto form = std::make_unique<dialogs::frmStockCodeTable>(PathOfSample(layout_), services_.user, services_.engine);
    connect(form.get(), &dialogs::frmStockCodeTable::Unloaded, this, [this](bool byReports) {
        GoOn(byReports ? [this] { ShowDesigner(std::nullopt); } : std::function<void()>());
    });
    form_ = std::move(form);
    form_->show();
}

void DesignerProgram::ShowDesigner(const std::optional<std::string>& layoutFile) {
    const designer::DesignerServices services{layout_, services_.user, services_.engine, services_.clock, printer_};
    designer::DesignerForms forms;
    designer::OfferSurfaceForms(services, forms);
    OfferDialogForms(services, forms);
    forms.showWarnings = services_.showWarnings;
    if (services_.checkDatabase)
        // The wizard may be left for the very reason that the database is gone.
        forms.checkDatabase = [this] {
            dialogs::DoneOrTold(services_.user,
                                [this] { services_.checkDatabase(FindReportDatabase(layout_, services_.user)); });
        };
    auto form = std::make_unique<designer::frmCustomReport>(services, std::move(forms), layoutFile);
    connect(form.get(), &designer::frmCustomReport::Unloaded, this,
            [this](bool byExit) { GoOn(byExit ? [this] { ShowStartForm(); } : std::function<void()>()); });
    form_ = std::move(form);
    form_->show();
}

/// The form that is closed tells so from inside itself, so it goes when it has come back.
void DesignerProgram::GoOn(std::function<void()> openNext) {
    QTimer::singleShot(0, this, [this, openNext = std::move(openNext)] {
        form_.reset();
        if (openNext) return openNext();
        Q_EMIT Ended();
    });
}

cli::ExitCode RunDesignerProgram(DesktopUser& user, const std::optional<std::string>& layoutFile) {
    const SystemClock clock;
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const auto check = [&](const std::optional<std::string>& path) { CheckWithWizard(path, *engine, user); };
    DesignerProgram program({user, *engine, clock, check, [&user] { user.ShowWarnings(); }});
    QEventLoop loop;
    QObject::connect(&program, &DesignerProgram::Ended, &loop, &QEventLoop::quit);
    program.Start(layoutFile);
    loop.exec();
    return cli::ExitCode::Done;
}

}  // namespace quillform
