#include "cli/Command.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/Version.h"

namespace quillform::cli {

namespace {

const std::array<const Verb*, 8>& Verbs() {
    static const std::array<const Verb*, 8> verbs = {&runVerb, &configureVerb, &checkVerb, &tablesVerb,
                                                     &sqlVerb, &exportVerb,    &infoVerb,  &sampleVerb};
    return verbs;
}

void Print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size() + 2, width), ' ');
    return text;
}

std::string Help() {
    std::string text =
        "Usage: quillform VERB [SWITCHES] ...\n"
        "Designs and runs reports over Microsoft Access databases (.mdb).\n\n"
        "Verbs:\n";
    for (const Verb* verb : Verbs())
        text += "  " + Padded(std::string(verb->name), 12) + std::string(verb->summary) + "\n";
    text +=
        "\nSwitches:\n"
        "  -h, --help      this text; behind a verb, the verb's own\n"
        "      --version   the version\n\n"
        "Exit codes: 0 done; 1 the work failed; 2 wrong usage; 3 done, but no records; 4 done with warnings under\n"
        "--strict; 5 database missing, damaged, locked or not readable; 6 layout or query file unreadable or pointing\n"
        "at what isn't there; 7 output can't be written; 130 interrupted.\n";
    return text;
}

std::string HelpOf(const Verb& verb) {
    std::string text = "Usage: quillform " + std::string(verb.name) + " [SWITCHES] " + std::string(verb.operands) +
                       "\n" + std::string(verb.summary) + "\n";
    if (!verb.details.empty()) text += "\n" + std::string(verb.details) + "\n";
    text += "\nSwitches:\n";
    for (const Switch& s : verb.switches) {
        std::string name = s.letter ? std::string("  -") + s.letter + ", --" : std::string("      --");
        name += s.name;
        if (!s.value.empty()) name += " " + std::string(s.value);
        text += Padded(name, 30) + std::string(s.help) + "\n";
    }
    return text + Padded("  -h, --help", 30) + "this text\n";
}

void Complain(std::string_view sentence) {
    std::fprintf(stderr, "quillform: %.*s\n", static_cast<int>(sentence.size()), sentence.data());
}

ExitCode RunVerb(const Verb& verb, std::span<const std::string_view> words) {
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
    try {
        return verb.run(Arguments(words, verb.switches));
    } catch (const UsageError& error) {
        Complain(std::string(error.what()) + "; try \"quillform " + std::string(verb.name) + " --help\".");
        return ExitCode::Usage;
    } catch (const RunTimeError& error) {
        Complain(error.what());
        return ExitCodeOf(error);
    }
}

ExitCode Dispatch(std::span<const std::string_view> words) {
    if (words.empty()) {
        Complain("this build has no desktop program to open; try \"quillform --help\".");
        return ExitCode::Usage;
    }
    if (words[0] == "--help" || words[0] == "-h" || words[0] == "help") {
        Print(Help());
        return ExitCode::Done;
    }
    if (words[0] == "--version") {
        Print(std::string(versionLine) + "\n");
        return ExitCode::Done;
    }
    const auto found =
        std::find_if(Verbs().begin(), Verbs().end(), [&](const Verb* verb) { return verb->name == words[0]; });
    if (found != Verbs().end()) return RunVerb(**found, words.subspan(1));
    Complain("there is no verb \"" + std::string(words[0]) +
             "\", and this build has no desktop program to open it with; try \"quillform --help\".");
    return ExitCode::Usage;
}

}  // namespace

ExitCode RunCommand(std::span<const std::string_view> words) {
    try {
        const ExitCode code = Dispatch(words);
        if (std::fflush(stdout) == 0 || code != ExitCode::Done) return code;
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
