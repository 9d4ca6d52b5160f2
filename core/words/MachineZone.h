#pragma once

#include <string>

namespace tolvane {

/// Keeps the program in the machine's time zone, which changes when the user travels. After a change, texts and
/// calendars of the machine's own zone use the new one. Main thread.
class MachineZone {
public:
    /// `link` points to the machine's zone.
    explicit MachineZone(std::string link = "/etc/localtime");

    /// Reads the link, which takes microseconds; true when it points elsewhere than before.
    bool follow();

private:
    std::string target() const;

    std::string link_;
    std::string target_;
};

}  // namespace tolvane
