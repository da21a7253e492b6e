#include "desktop/Windows.h"

#include "desktop/Application.h"
#include "desktop/DesignerProgram.h"
#include "desktop/DesktopUser.h"

namespace quillform {

namespace {

/// Opens what is asked for.
struct Opener {
    DesktopUser& user;

    cli::ExitCode operator()(const cli::OpenDesktop& request) const { return OpenDesigner(user, request.layout); }
    cli::ExitCode operator()(const cli::ConfigureInWindows&) const { return Unready(); }

    cli::ExitCode Unready() const {
        user.Message(
            "Questions can't be asked in windows yet; quillform configure DATABASE --defaults takes the "
            "proposed answers.",
            {});
        return cli::ExitCode::Failed;
    }
};

}  // namespace

cli::ExitCode OpenWindows(const cli::DesktopRequest& request) {
    const Application application;
    DesktopUser user;
    return std::visit(Opener{user}, request);
}

}  // namespace quillform
