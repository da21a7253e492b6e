#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "model/UserInterface.h"
#include "platform/Clock.h"
#include "platform/RunTimeError.h"

namespace quillform {

/// What a procedure does after an unexpected error.
enum class ErrorAction : std::int16_t {
    Repeat = 0,          ///< repeat what failed
    GoOn = 1,            ///< go on behind it
    Leave = 2,           ///< leave the procedure
    LeaveDuplicate = 3,  ///< leave the procedure; a value is there already
    EndProgram = 4,
};

/// The one place that explains run-time errors to the user. Known ones are told in plain words or passed over; any
/// other is shown as a system error and added to ERROR.LOG in the program's folder.
class RunTimeErrors {
public:
    using Wait = std::function<void(std::int32_t seconds)>;

    /// `user` and `clock` outlive it. `programFolder` is where the log lies. `wait` is Delay by the clock, unless a
    /// test hands in a quicker one.
    RunTimeErrors(UserInterface& user, const Clock& clock, const std::filesystem::path& programFolder, Wait wait = {});

    /// `strWhere` names the procedure that caught the error, such as "QUERY:LFileCmd_Click".
    ErrorAction ErrorHandler(const RunTimeError& error, std::string_view strWhere);
    /// Asks whether to try again what another user holds; true after a wait of 2 seconds.
    bool NetworkRetry();
    /// Tells the error and writes it to the log. A log that another process is writing is waited for, 3 times 2 seconds
    /// at most; one that can't be written is told. Never fails.
    void LogError(std::string_view strWhere, std::string_view strName, int vntNumber);

private:
    void Tell(std::string_view text, std::string_view title);
    void WriteLog(std::string_view entry);

    UserInterface& user_;
    const Clock& clock_;
    std::filesystem::path log_;
    Wait wait_;
};

}  // namespace quillform
