#pragma once

#include <string>

#include "model/UserInterface.h"
#include "model/collQuery.h"
#include "platform/Clock.h"
#include "support/HandledStep.h"

namespace quillform::dialogs {

/// "Load from File" and "Save to File" of the query builder. Both tell what hinders them, and give StepEnd::Left then,
/// as for a cancelled dialog. StepEnd::EndProgram: an error that nobody expected was told and is in ERROR.LOG.
class QueryFileCommands {
public:
    /// `user` and `clock` outlive it; `appPath` is the program's folder with a trailing separator. `wait` as in
    /// RunTimeErrors.
    QueryFileCommands(UserInterface& user, const Clock& clock, std::string appPath, RunTimeErrors::Wait wait = {});

    /// Adds the lines of a file that the user chooses. All or none.
    StepEnd Load(collQuery& lines);
    /// Writes the lines to a file that the user names. An existing file is replaced whole, or not at all.
    StepEnd Save(const collQuery& lines);

private:
    FileDialog Dialog(std::string title) const;

    UserInterface& user_;
    std::string appPath_;
    RunTimeErrors errors_;
};

}  // namespace quillform::dialogs
