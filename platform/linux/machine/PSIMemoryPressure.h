#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/MemoryPressure.h"

namespace tolvane::linuxhost {

/// Events from the kernel's pressure-stall information: one each time tasks stalled for lack of memory for 150 ms
/// within 2 seconds. That is the earliest an ordinary user may ask for, and long before memory is exhausted. At most
/// one event every 2 seconds. Where the kernel refuses such triggers, the averages are read every 10 seconds instead,
/// and a reading with the same share of stall in the last 10 seconds is an event. A kernel without the measure yields
/// no events. Nothing runs or wakes without subscribers. Main thread, with its event loop.
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
