#pragma once

#include <string_view>

#include "support/ErrorHandler.h"

namespace quillform {

/// How a procedure goes on behind a step that the error handler watched over.
enum class StepEnd {
    Done,        ///< with what comes next: the step succeeded, or its failure doesn't matter
    Left,        ///< not at all
    EndProgram,  ///< nor does the program
};

/// Runs a step, and again as long as its errors are to be answered by a repetition. A step that is repeated must leave
/// nothing behind when it fails. `strWhere` names the procedure.
template <typename Step>
StepEnd RunHandled(RunTimeErrors& errors, std::string_view strWhere, Step step) {
    for (;;) {
        try {
            step();
            return StepEnd::Done;
        } catch (const RunTimeError& error) {
            switch (errors.ErrorHandler(error, strWhere)) {
                case ErrorAction::Repeat:
                    break;
                case ErrorAction::GoOn:
                    return StepEnd::Done;
                case ErrorAction::Leave:
                case ErrorAction::LeaveDuplicate:
                    return StepEnd::Left;
                case ErrorAction::EndProgram:
                    return StepEnd::EndProgram;
            }
        }
    }
}

}  // namespace quillform
