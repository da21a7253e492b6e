#include "desktop/Application.h"

#include <unistd.h>

#include <QIcon>
#include <cstdio>

#include "cli/ExitCode.h"

// Outside of any namespace, as Qt asks.
static void LoadPictures() { Q_INIT_RESOURCE(desktop); }

namespace quillform {

namespace {

/// While Qt starts: hints of its plug-ins concern nobody, and the end comes in a sentence rather than with a core dump.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg) return;
    std::fprintf(stderr, "quillform: no window can be opened on the display that the environment names (%s).\n",
                 qEnvironmentVariableIsEmpty("DISPLAY") ? "WAYLAND_DISPLAY or QT_QPA_PLATFORM" : "DISPLAY");
    std::fflush(nullptr);
    _exit(static_cast<int>(cli::ExitCode::Failed));
}

/// The message handler must be in place before the application object is made.
int& Guarded(int& count) {
    qInstallMessageHandler(EndWithoutDisplay);
    return count;
}

}  // namespace

Application::Application() : application_(Guarded(count_), words_) {
    qInstallMessageHandler(nullptr);
    LoadPictures();
    QApplication::setApplicationName(QStringLiteral("quillform"));
    QApplication::setDesktopFileName(QStringLiteral("quillform"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/desktop/quillform.svg")));
    // A walk hides its form between two boxes; the program ends when the work does.
    QApplication::setQuitOnLastWindowClosed(false);
}

}  // namespace quillform
