#include "support/ErrorHandler.h"

#include <string>

#include "support/Delay.h"
#include "support/ErrorLog.h"

namespace quillform {

namespace {

constexpr std::int32_t secondsToWait = 2;
constexpr int mostWaits = 3;

}  // namespace

RunTimeErrors::RunTimeErrors(UserInterface& user, const Clock& clock, const std::filesystem::path& programFolder,
                             Wait wait)
    : user_(user), clock_(clock), log_(programFolder / "ERROR.LOG"), wait_(std::move(wait)) {
    if (!wait_) wait_ = [this](std::int32_t seconds) { Delay(seconds, clock_); };
}

ErrorAction RunTimeErrors::ErrorHandler(const RunTimeError& error, std::string_view strWhere) {
    switch (static_cast<int>(error.Number())) {
        case static_cast<int>(ErrorNumber::BadFileName):
            return ErrorAction::Leave;
        case static_cast<int>(ErrorNumber::FileNotFound):
            Tell("Could not find file!", "DISK ERROR");
            return ErrorAction::Leave;
        case static_cast<int>(ErrorNumber::ObjectNotSet):
        case static_cast<int>(ErrorNumber::InvalidUseOfNull):
            return ErrorAction::GoOn;
        case static_cast<int>(ErrorNumber::DuplicateKey):
            Tell("This indexed field does not allow duplicates.", "ERROR");
            return ErrorAction::LeaveDuplicate;
        case static_cast<int>(ErrorNumber::Locked):
            return NetworkRetry() ? ErrorAction::Repeat : ErrorAction::Leave;
        default:
            LogError(strWhere, error.what(), static_cast<int>(error.Number()));
            return ErrorAction::EndProgram;
    }
}

bool RunTimeErrors::NetworkRetry() {
    if (!user_.AskRetry("This file or record is currently in use.", "NETWORK", MessageIcon::Question)) return false;
    wait_(secondsToWait);
    return true;
}

void RunTimeErrors::LogError(std::string_view strWhere, std::string_view strName, int vntNumber) {
    std::string message = "The following Error occurred:\r\n\r\n";
    message.append("Error: ").append(strName).append("\r\n");
    message.append("Error Number: ").append(std::to_string(vntNumber)).append("\r\n");
    message.append("In Procedure: ").append(strWhere).append("\r\n");
    message.append("(or a subsequent call from this procedure)\r\n\r\n");
    message.append("NOTE: This error appended to error log file");
    user_.Beep();
    Tell(message, "********** SYSTEM ERROR **********");
    WriteLog(LogEntry(strWhere, strName, vntNumber, clock_.Now()));
}

void RunTimeErrors::WriteLog(std::string_view entry) {
    for (int waits = 0;; ++waits) {
        try {
            return AppendLocked(log_, entry);
        } catch (const RunTimeError& error) {
            if (error.Number() == ErrorNumber::FileNotFound) return user_.Message("Could not open ERROR.LOG");
            if (error.Number() != ErrorNumber::PermissionDenied)
                return user_.Message("Error while writing ERROR.LOG\r\nERROR :" + std::string(error.what()));
            if (waits == mostWaits) return user_.Message("Could not update ERROR.LOG");
        }
        wait_(secondsToWait);
    }
}

void RunTimeErrors::Tell(std::string_view text, std::string_view title) {
    user_.MessageWithIcon(text, title, MessageIcon::Exclamation);
}

}  // namespace quillform
