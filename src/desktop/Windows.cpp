#include "desktop/Windows.h"

#include "data/Engine.h"
#include "desktop/Application.h"
#include "desktop/Configuration.h"
#include "desktop/DesignerProgram.h"
#include "desktop/DesktopUser.h"

namespace quillform {

namespace {

/// Opens what is asked for.
struct Opener {
    DesktopUser& user;

    cli::ExitCode operator()(const cli::OpenDesktop& request) const { return RunDesignerProgram(user, request.layout); }
    cli::ExitCode operator()(const cli::ConfigureInWindows& request) const {
        const SystemClock clock;
        const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
        Configure(request.database, *engine, user, request.record);
        return cli::ExitCode::Done;
    }
};

}  // namespace

cli::ExitCode OpenWindows(const cli::DesktopRequest& request) {
    const Application application;
    DesktopUser user;
    return std::visit(Opener{user}, request);
}

}  // namespace quillform
