#include "desktop/DesignerProgram.h"

#include <QEventLoop>
#include <filesystem>

#include "data/Engine.h"
#include "designer/SurfaceForms.h"
#include "designer/frmCustomReport.h"
#include "desktop/Configuration.h"
#include "engine/ReportRun.h"
#include "platform/Paths.h"
#include "sample/SampleData.h"

namespace quillform {

namespace {

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

cli::ExitCode OpenDesigner(DesktopUser& user, const std::optional<std::string>& layoutFile) {
    const SystemClock clock;
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Layout layout;
    layout.InitReportModule();
    layout.ClearLayout();
    MakeSamplesOnce(layout, *engine, user);

    designer::PrinterSetup printer;
    designer::DesignerForms forms;
    forms.checkDatabase = [&] { CheckWithWizard(FindReportDatabase(layout, user), *engine, user); };
    forms.showWarnings = [&] { user.ShowWarnings(); };
    const designer::DesignerServices services{layout, user, *engine, clock, printer};
    designer::OfferSurfaceForms(services, forms);
    designer::frmCustomReport form(services, std::move(forms), WholePath(layoutFile));
    QEventLoop loop;
    QObject::connect(&form, &designer::frmCustomReport::Unloaded, &loop, &QEventLoop::quit);
    form.show();
    loop.exec();
    return cli::ExitCode::Done;
}

}  // namespace quillform
