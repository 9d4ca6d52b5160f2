#pragma once

#include <string>

namespace tolvane {

/// Keeps the program in the time zone of its machine, whose owner may travel while it runs. Words and calendars of the
/// machine's own zone are of the new one from then on. Main thread.
class MachineZone {
public:
    /// `link` leads to the zone that the machine is in.
    explicit MachineZone(std::string link = "/etc/localtime");

    /// Looks where the link leads, which takes microseconds; true when it leads elsewhere than before.
    bool follow();

private:
    std::string target() const;

    std::string link_;
    std::string target_;
};

}  // namespace tolvane
