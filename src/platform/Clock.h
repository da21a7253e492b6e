#pragma once

namespace quillform {

/// Date, time and timer of a run, handed in so that tests and unattended runs can fix them.
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time, in days since 1899-12-30.
    virtual double Now() const = 0;
    /// Seconds for measuring durations; only differences count.
    virtual double Timer() const = 0;
};

/// The machine's clock. Honours SOURCE_DATE_EPOCH (seconds since 1970-01-01 UTC) for Now, read as UTC.
class SystemClock final : public Clock {
public:
    double Now() const override;
    double Timer() const override;
};

/// Stands still; Timer gives 0, so that all measured times are equal.
class FixedClock final : public Clock {
public:
    explicit FixedClock(double now) : now_(now) {}
    double Now() const override { return now_; }
    double Timer() const override { return 0; }

private:
    double now_;
};

}  // namespace quillform
