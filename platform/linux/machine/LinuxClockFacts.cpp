#include "platform/linux/machine/LinuxClockFacts.h"

#include <unistd.h>

#include <ctime>

namespace tolvane::linuxhost {

namespace {

double seconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

LinuxClockFacts LinuxClockFacts::read() {
    const long ticks = ::sysconf(_SC_CLK_TCK);
    return {.bootUnixSeconds = seconds(CLOCK_REALTIME) - seconds(CLOCK_BOOTTIME),
            .ticksPerSecond = ticks > 0 ? static_cast<double>(ticks) : 100};
}

Seconds uptime() { return Seconds{seconds(CLOCK_BOOTTIME)}; }

}  // namespace tolvane::linuxhost
