#include "cli/TerminalUser.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace quillform::cli {

namespace {

// A signal handler can reach nothing but what is global.
volatile std::sig_atomic_t interrupted = 0;

/// The first signal asks for an orderly end; a second one doesn't wait for it.
void NoteInterrupt(int number) {
    interrupted = 1;
    std::signal(number, SIG_DFL);
}

/// A signal that whoever started the program has turned off, as nohup does, stays off.
void Catch(int number) {
    if (std::signal(number, NoteInterrupt) == SIG_IGN) std::signal(number, SIG_IGN);
}

void Release(int number) {
    if (std::signal(number, SIG_DFL) == SIG_IGN) std::signal(number, SIG_IGN);
}

constexpr int caughtSignals[] = {SIGINT, SIGTERM, SIGHUP};

void PrintLine(std::string_view text) {
    std::fprintf(stderr, "quillform: %.*s\n", static_cast<int>(text.size()), text.data());
}

}  // namespace

TerminalUser::TerminalUser(Choices choices)
    : choices_(choices), showsProgress_(!choices.isQuiet && isatty(STDERR_FILENO) == 1) {}

void TerminalUser::Message(std::string_view text, std::string_view) {
    HideProgress();
    PrintLine(text);
}

bool TerminalUser::Ask(std::string_view question, std::string_view, MessageIcon) {
    HideProgress();
    if (!choices_.isQuiet) PrintLine(std::string(question) + (choices_.answersYes ? " Yes." : " No."));
    return choices_.answersYes;
}

void TerminalUser::Warn(std::string_view text) {
    warnings_.emplace_back(text);
    if (choices_.isQuiet) return;
    HideProgress();
    PrintLine(text);
}

void TerminalUser::Note(std::string_view text) {
    if (choices_.isQuiet) return;
    HideProgress();
    PrintLine(text);
}

/// There is no window here, so the file is named instead.
void TerminalUser::ShowPrintWindow(const std::string& file) {
    if (file == "-") return;  // standard output shows itself
    Note("The screen report is in \"" + file + "\"; any program that reads rich text shows it.");
}

void TerminalUser::SetProgress(long long value) {
    if (!showsProgress_ || maximum_ <= 0) return;
    const auto now = std::chrono::steady_clock::now();
    if (now - lastShown_ < std::chrono::milliseconds(100)) return;
    lastShown_ = now;
    hasProgressLine_ = true;
    std::fprintf(stderr, "\r%3lld %% (%lld of %lld records)", value * 100 / maximum_, value, maximum_);
    std::fflush(stderr);
}

void TerminalUser::HideProgress() {
    if (!hasProgressLine_) return;
    hasProgressLine_ = false;
    std::fputs("\r\033[K", stderr);
}

bool TerminalUser::YieldAndIsCancelled() { return interrupted != 0; }

InterruptGuard::InterruptGuard() {
    interrupted = 0;
    for (const int number : caughtSignals) Catch(number);
}

InterruptGuard::~InterruptGuard() {
    for (const int number : caughtSignals) Release(number);
}

bool InterruptGuard::IsInterrupted() { return interrupted != 0; }

}  // namespace quillform::cli
