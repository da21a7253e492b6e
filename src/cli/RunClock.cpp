#include "cli/RunClock.h"

#include "cli/Arguments.h"
#include "platform/Dates.h"

namespace quillform::cli {

RunClock::RunClock(const std::optional<std::string>& date) {
    if (!date) return;
    fixed_ = ParseDate(*date, PartsOf(system_.Now()).year);
    if (!fixed_) throw UsageError("\"" + *date + "\" is no date");
}

}  // namespace quillform::cli
