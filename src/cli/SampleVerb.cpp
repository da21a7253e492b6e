#include <cstdio>

#include "cli/Command.h"
#include "cli/RunClock.h"
#include "data/Engine.h"
#include "sample/SampleData.h"

namespace quillform::cli {

namespace {

ExitCode MakeSamples(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "FOLDER");
    const RunClock clock(std::nullopt);
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    for (const std::filesystem::path& made : sample::WriteSamples(*engine, arguments.Operands()[0]))
        std::printf("%s\n", made.c_str());
    return ExitCode::Done;
}

}  // namespace

const Verb sampleVerb = {"sample",
                         "FOLDER",
                         "Makes the sample database and report layouts in a folder.",
                         "Files that are there already are not touched; then nothing is made.",
                         {},
                         MakeSamples};

}  // namespace quillform::cli
