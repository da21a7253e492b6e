#include "cli/Command.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/StandardStreams.h"
#include "cli/Version.h"
#include "platform/Text.h"

namespace quillform::cli {

namespace {

const std::array<const Verb*, 9>& Verbs() {
    static const std::array<const Verb*, 9> verbs = {&runVerb,    &configureVerb, &checkVerb, &tablesVerb, &sqlVerb,
                                                     &exportVerb, &infoVerb,      &showVerb,  &sampleVerb};
    return verbs;
}

void Print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size() + 2, width), ' ');
    return text;
}

/// A text behind the first `indent` columns of a line, on as many lines as a terminal of ordinary width needs.
std::string Wrapped(std::string_view text, std::size_t indent) {
    constexpr std::size_t terminalWidth = 80;
    const std::size_t width = terminalWidth - indent;
    std::string lines;
    while (text.size() > width) {
        const std::size_t blank = text.rfind(' ', width);
        if (blank == std::string_view::npos) break;
        lines += std::string(text.substr(0, blank)) + "\n" + std::string(indent, ' ');
        text.remove_prefix(blank + 1);
    }
    return lines + std::string(text) + "\n";
}

std::string Help() {
    std::string text =
        "Usage: quillform VERB [SWITCHES] ...\n"
        "       quillform [LAYOUT.REP]    in windows\n"
        "Designs and runs reports over Microsoft Access databases (.mdb).\n\n"
        "Verbs:\n";
    for (const Verb* verb : Verbs())
        text += "  " + Padded(std::string(verb->name), 12) + std::string(verb->summary) + "\n";
    text +=
        "\nSwitches:\n"
        "  -h, --help            this text; behind a verb, the verb's own\n"
        "      --list-printers   the printers of the system; with --json as JSON\n"
        "      --version         the version\n\n"
        "Exit codes: 0 done; 1 the work failed; 2 wrong usage; 3 done, but no records; 4 done with warnings under\n"
        "--strict; 5 database missing, damaged, locked, not readable or not configured; 6 layout, query, answers or\n"
        "rich text file unreadable, or pointing at what isn't there; 7 output can't be written; 130 interrupted.\n";
    return text;
}

std::string HelpOf(const Verb& verb) {
    std::string text = "Usage: quillform " + std::string(verb.name) + " [SWITCHES] " + std::string(verb.operands) +
                       "\n" + std::string(verb.summary) + "\n";
    if (!verb.details.empty()) text += "\n" + std::string(verb.details) + "\n";
    text += "\nSwitches:\n";
    constexpr std::size_t indent = 30;
    for (const Switch& s : verb.switches) {
        std::string name = s.letter ? std::string("  -") + s.letter + ", --" : std::string("      --");
        name += s.name;
        if (!s.value.empty()) name += " " + std::string(s.value);
        text += Padded(name, indent) + Wrapped(s.help, indent);
    }
    return text + Padded("  -h, --help", indent) + "this text\n";
}

void Complain(std::string_view sentence) {
    std::fprintf(stderr, "quillform: %.*s\n", static_cast<int>(sentence.size()), sentence.data());
}

/// Does the work and turns what it throws into a sentence and an exit code. `verb` has the help to look into.
template <typename Work>
ExitCode Guarded(std::string_view verb, Work work) {
    try {
        return work();
    } catch (const UsageError& error) {
        const std::string words = verb.empty() ? "" : std::string(verb) + " ";
        Complain(std::string(error.what()) + "; try \"quillform " + words + "--help\".");
        return ExitCode::Usage;
    } catch (const RunTimeError& error) {
        Complain(error.what());
        return ExitCodeOf(error);
    }
}

/// `otherwise` is the end of the sentence that says why no window can be opened.
ExitCode OpenWindows(const DesktopRequest& request, const std::string& otherwise, const Desktop& desktop) {
    if (!desktop) throw UsageError("this installation has no windows, only the command" + otherwise);
    if (!HasDisplay())
        throw RunTimeError(ErrorNumber::NotSupported, "there is no display to open a window on" + otherwise + ".");
    return desktop(request);
}

ExitCode RunVerb(const Verb& verb, std::span<const std::string_view> words, const Desktop& desktop) {
    for (const std::string_view word : words) {
        if (word == "--") break;
        if (word == "--help" || word == "-h") {
            Print(HelpOf(verb));
            return ExitCode::Done;
        }
        if (word == "--version") {
            Print(std::string(versionLine) + "\n");
            return ExitCode::Done;
        }
    }
    return Guarded(verb.name, [&] {
        const Arguments arguments(words, verb.switches);
        if (const auto request = verb.windows ? verb.windows(arguments) : std::nullopt)
            return OpenWindows(*request, "; " + std::string(verb.withoutWindows), desktop);
        return verb.run(arguments);
    });
}

/// The desktop program, for words that are no verb: none at all, or a layout alone.
ExitCode OpenProgram(std::span<const std::string_view> words, const Desktop& desktop) {
    OpenDesktop request;
    if (!words.empty()) request.layout = std::string(words[0]);
    return Guarded("", [&] { return OpenWindows(request, "", desktop); });
}

bool IsLayout(std::string_view word) {
    constexpr std::string_view extension = ".rep";
    return word.size() > extension.size() && EqualCaseBlind(word.substr(word.size() - extension.size()), extension);
}

ExitCode Dispatch(std::span<const std::string_view> words, const Desktop& desktop) {
    if (words.empty() || (words.size() == 1 && IsLayout(words[0]))) return OpenProgram(words, desktop);
    if (words[0] == "--help" || words[0] == "-h" || words[0] == "help") {
        Print(Help());
        return ExitCode::Done;
    }
    if (words[0] == "--version") {
        Print(std::string(versionLine) + "\n");
        return ExitCode::Done;
    }
    // Which printer to name is asked before there is a report to run.
    if (words[0] == "--list-printers") return RunVerb(runVerb, words, desktop);
    const auto found =
        std::find_if(Verbs().begin(), Verbs().end(), [&](const Verb* verb) { return verb->name == words[0]; });
    if (found != Verbs().end()) return RunVerb(**found, words.subspan(1), desktop);
    Complain("there is no verb \"" + std::string(words[0]) + "\"; try \"quillform --help\".");
    return ExitCode::Usage;
}

}  // namespace

ExitCode RunCommand(std::span<const std::string_view> words, const Desktop& desktop) {
    HoldStandardStreams();
    try {
        const ExitCode code = Dispatch(words, desktop);
        // The mark of an error stays from a long text that failed while it was printed.
        if ((std::fflush(stdout) == 0 && std::ferror(stdout) == 0) || code != ExitCode::Done) return code;
        Complain("the standard output can't be written.");
        return ExitCode::Target;
    } catch (const std::bad_alloc&) {
        Complain("there is not enough memory for this.");
    } catch (const std::exception& error) {
        Complain(std::string("unexpected failure: ") + error.what());
    }
    return ExitCode::Failed;
}

}  // namespace quillform::cli
