#pragma once

#include <optional>
#include <string>

#include "platform/Clock.h"

namespace quillform::cli {

/// The machine's timer, with the date that `--date` fixes.
class RunClock final : public Clock {
public:
    /// UsageError if `date` is given and is no date.
    explicit RunClock(const std::optional<std::string>& date);
    double Now() const override { return fixed_ ? *fixed_ : system_.Now(); }
    double Timer() const override { return system_.Timer(); }

private:
    SystemClock system_;
    std::optional<double> fixed_;
};

}  // namespace quillform::cli
