#pragma once

#include <cstdint>
#include <functional>

#include "platform/Clock.h"

namespace quillform {

/// Lets this thread stand still for so many seconds.
void SleepFor(double seconds);

/// Waits until `lngSeconds` have passed since the whole second nearest to the start, so up to half a second more or
/// less. No events are passed on meanwhile. The clock's timer doesn't begin anew at midnight, so a wait across midnight
/// is as long as any other. `sleep` is called with what is left.
void Delay(std::int32_t lngSeconds, const Clock& clock, const std::function<void(double)>& sleep = SleepFor);

}  // namespace quillform
