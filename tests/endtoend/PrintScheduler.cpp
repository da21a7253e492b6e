#include "endtoend/PrintScheduler.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>

namespace endtoend {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr const char* program = "/usr/sbin/cupsd";
constexpr const char* installedParts = "/usr/lib/cups";

bool WaitUntil(const std::function<bool()>& isSo) {
    const auto deadline = std::chrono::steady_clock::now() + 8s;
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

bool Listens(const std::string& socketFile) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketFile.size() >= sizeof address.sun_path) return false;
    socketFile.copy(address.sun_path, socketFile.size());
    const int probe = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isThere = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(probe);
    return isThere;
}

std::string PrinterRecord(const std::string& name, bool isDefault, const std::string& settings) {
    const std::string kind = isDefault ? "DefaultPrinter" : "Printer";
    return "<" + kind + " " + name + ">\nDeviceURI catch:/" + name + "\n" + settings + "</" + kind + ">\n";
}

}  // namespace

bool PrintScheduler::IsInstalled() { return access(program, X_OK) == 0; }

PrintScheduler::PrintScheduler(Default isDefault) {
    WriteConfiguration(isDefault);
    WriteBackend();
    const std::string settings = folder_.File("cupsd.conf");
    const std::string files = folder_.File("cups-files.conf");
    process_ = fork();
    if (process_ == 0) {
        const int nothing = open("/dev/null", O_RDWR);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, stream);
        execl(program, program, "-f", "-c", settings.c_str(), "-s", files.c_str(), nullptr);
        _exit(127);
    }
    for (const char* variable : {"LPDEST", "PRINTER"}) unsetenv(variable);
    setenv("CUPS_SERVER", folder_.File("socket").c_str(), 1);
    if (!WaitUntil([this] { return Listens(folder_.File("socket")); })) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }
}

PrintScheduler::~PrintScheduler() {
    unsetenv("CUPS_SERVER");
    if (process_ <= 0) return;
    kill(process_, SIGTERM);
    if (!WaitUntil([this] { return waitpid(process_, nullptr, WNOHANG) != 0; })) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
}

void PrintScheduler::WriteConfiguration(Default isDefault) {
    const std::string root = folder_.Path().string();
    for (const char* name : {"spool", "cache", "state", "caught", "parts", "parts/backend"})
        fs::create_directory(folder_ / name);
    for (const char* name : {"daemon", "filter"})
        if (fs::exists(fs::path(installedParts) / name))
            fs::create_directory_symlink(fs::path(installedParts) / name, folder_ / "parts" / name);
    WriteFile(folder_ / "cupsd.conf", "Listen " + root + "/socket\n" + R"(LogLevel debug
Browsing No
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order allow,deny
</Limit>
</Policy>
)");
    std::string files = "Sandboxing Relaxed\nServerRoot " + root + "\nServerBin " + root + "/parts\n";
    files += "RequestRoot " + root + "/spool\nTempDir " + root + "/spool\n";
    files += "CacheDir " + root + "/cache\nStateDir " + root + "/state\n";
    for (const char* log : {"ErrorLog ", "AccessLog ", "PageLog "}) files += log + root + "/log\n";
    WriteFile(folder_ / "cups-files.conf", files);
    WriteFile(folder_ / "printers.conf",
              PrinterRecord("Office", isDefault == Default::Office,
                            "Info Second floor\nLocation Hall\nState Idle\nAccepting Yes\n") +
                  PrinterRecord("Stopped", false, "State Stopped\nReason media-empty-error\nAccepting Yes\n") +
                  PrinterRecord("Closed", false, "State Idle\nAccepting No\n"));
}

/// The way to the printer: a program that gets number, user, title, copies, options and the document's file.
void PrintScheduler::WriteBackend() {
    const fs::path backend = folder_ / "parts/backend/catch";
    const std::string caught = folder_.File("caught");
    WriteFile(backend,
              "#!/bin/sh\n[ $# -eq 0 ] && exit 0\n"
              "cat \"${6:--}\" >'" +
                  caught +
                  "'/\"$1.document\"\n"
                  "printf '%s\\n' \"$3\" \"$4\" \"$5\" >'" +
                  caught +
                  "'/\"$1.part\"\n"
                  "mv '" +
                  caught + "'/\"$1.part\" '" + caught + "'/\"$1.job\"\n");
    // The scheduler runs it as root if nobody else may, and refuses it if others may write to it.
    fs::permissions(backend, fs::perms::owner_all);
}

PrintScheduler::Job PrintScheduler::Printed(int number) const {
    const fs::path stem = folder_ / "caught" / std::to_string(number);
    if (!WaitUntil([&] { return fs::exists(stem.string() + ".job"); })) return {};
    const std::vector<std::string> lines = Lines(ReadFile(stem.string() + ".job"));
    return {lines.at(0), lines.at(1), lines.at(2), ReadFile(stem.string() + ".document")};
}

std::size_t PrintScheduler::Received() const {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(folder_ / "spool"))
        if (entry.path().filename().string().front() == 'd') ++count;
    return count;
}

}  // namespace endtoend
