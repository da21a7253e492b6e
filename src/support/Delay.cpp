#include "support/Delay.h"

#include <chrono>
#include <thread>

#include "platform/Numbers.h"

namespace quillform {

void SleepFor(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

void Delay(std::int32_t lngSeconds, const Clock& clock, const std::function<void(double)>& sleep) {
    const double end = RoundHalfEven(clock.Timer()) + lngSeconds;
    for (double left = end - clock.Timer(); left > 0; left = end - clock.Timer()) sleep(left);
}

}  // namespace quillform
