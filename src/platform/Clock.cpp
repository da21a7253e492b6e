#include "platform/Clock.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string_view>

#include "platform/Dates.h"

namespace quillform {
namespace {

constexpr double kSecondsPerDay = 86400;

std::optional<std::time_t> SourceDateEpoch() {
    const char* variable = std::getenv("SOURCE_DATE_EPOCH");
    if (variable == nullptr) return std::nullopt;
    const std::string_view text = variable;
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return static_cast<std::time_t>(seconds);
}

double SerialOf(const std::tm& parts) {
    return DateSerial(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday) +
           (parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec) / kSecondsPerDay;
}

}  // namespace

double SystemClock::Now() const {
    std::tm parts{};
    if (const auto fixed = SourceDateEpoch();
        fixed && *fixed >= 0 && gmtime_r(&*fixed, &parts) != nullptr && parts.tm_year + 1900 <= 9999)
        return SerialOf(parts);
    const std::time_t now = std::time(nullptr);
    if (localtime_r(&now, &parts) == nullptr) return 0;
    return SerialOf(parts);
}

double SystemClock::Timer() const {
    using Seconds = std::chrono::duration<double>;
    return std::chrono::duration_cast<Seconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace quillform
