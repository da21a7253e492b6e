#include "cli/ExitCode.h"

namespace quillform::cli {

ExitCode ExitCodeOf(const RunTimeError& error) {
    switch (error.Number()) {
        case ErrorNumber::FileMissing:
        case ErrorNumber::UnrecognizedFormat:
        case ErrorNumber::PasswordRequired:
        case ErrorNumber::Locked:
        case ErrorNumber::CannotOpenExclusive:
        case ErrorNumber::NoPermission:
        case ErrorNumber::DiskError:
        case ErrorNumber::ReadOnly:
            return ExitCode::Database;
        case ErrorNumber::ItemNotFound:
        case ErrorNumber::InputTableNotFound:
        case ErrorNumber::TableNotFound:
        case ErrorNumber::TooFewParameters:
        case ErrorNumber::FileNotFound:
        case ErrorNumber::InvalidFileFormat:
            return ExitCode::Layout;
        case ErrorNumber::PathNotFound:
        case ErrorNumber::PermissionDenied:
        case ErrorNumber::DiskFull:
        case ErrorNumber::DeviceIo:
        case ErrorNumber::PrinterFailed:
        case ErrorNumber::PrinterInformation:
            return ExitCode::Target;
        case ErrorNumber::DialogCancelled:
            return ExitCode::Interrupted;
        default:
            return ExitCode::Failed;
    }
}

}  // namespace quillform::cli
