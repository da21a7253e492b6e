#include "cli/LoadForVerb.h"

#include "cli/InputFiles.h"
#include "persistence/QueryFile.h"
#include "platform/RunTimeError.h"

namespace quillform::cli {

namespace {

/// Whatever keeps a file from being read is told as one kind of failure, whose exit code scripts ask for.
template <typename Load>
void ReadOrRefuse(std::string_view kind, const std::string& file, Load load) {
    ExistingFile(kind, file, ErrorNumber::FileNotFound);
    try {
        load();
    } catch (const RunTimeError& error) {
        throw RunTimeError(ErrorNumber::FileNotFound, error.what());
    }
}

/// A user without a home has no folder of the program. Reports don't need one: it is only a last place to look in.
void FindProgramFolder(Layout& layout) {
    try {
        layout.InitReportModule();
    } catch (const RunTimeError&) {
        layout.strAppPath.clear();
    }
}

}  // namespace

std::vector<LayoutProblem> LoadForVerb(const std::string& file, Layout& layout, TextMeasure& measure,
                                       UserInterface& user) {
    FindProgramFolder(layout);
    layout.ClearLayout();
    std::vector<LayoutProblem> problems;
    ReadOrRefuse("layout", file,
                 [&] { LoadLayout(file, layout, measure, user, {.checkDatabase = {}, .problems = &problems}); });
    return problems;
}

void AddQueryFile(const std::string& file, Layout& layout) {
    ReadOrRefuse("query file", file, [&] { LoadQueries(file, layout.Queries); });
}

}  // namespace quillform::cli
