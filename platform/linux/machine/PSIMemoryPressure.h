#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/MemoryPressure.h"

namespace tolvane::linuxhost {

/// Events from the kernel's measure of stall: each time tasks stood still for want of memory for 150 ms within 2
/// seconds, as early as an ordinary user may ask and long before memory is exhausted. At most one event each 2 seconds.
/// Where the kernel takes no such order, the averages are read every 10 seconds instead, and an event is each reading
/// at which tasks had stood still for as large a share of the last 10 seconds. Without the measure there are no events.
/// Nothing runs or wakes while nobody is subscribed. Main thread, with its event loop.
class PSIMemoryPressure : public MemoryPressure {
public:
    struct Settings {
        std::string file = "/proc/pressure/memory";
        std::chrono::milliseconds pollInterval = std::chrono::seconds(10);
    };

    PSIMemoryPressure() : PSIMemoryPressure(Settings{}) {}
    explicit PSIMemoryPressure(Settings settings);
    PSIMemoryPressure(const PSIMemoryPressure&) = delete;
    PSIMemoryPressure& operator=(const PSIMemoryPressure&) = delete;
    ~PSIMemoryPressure() override;

    Subscription onPressure(std::function<void()> pressed) override;

private:
    class Watch;
    std::shared_ptr<Watch> watch_;
};

}  // namespace tolvane::linuxhost
