#pragma once

#include <string>
#include <vector>

namespace tolvane::bench {

/// One turn of the event loop: from the moment it wakes to the moment it polls for events again. A key press would wait
/// that long. Milliseconds.
struct Turn {
    double wall = 0;
    double cpu = 0;
};

/// Watches the main thread's loop, which must be GLib's. One at a time; made on that thread.
class Turns {
public:
    Turns();
    ~Turns();
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

    /// The turns since the last call that took more than a tenth of a millisecond of wall or CPU time.
    std::vector<Turn> take();
};

/// CPU time of one of this program's threads.
struct ThreadTime {
    std::string name;
    bool isMain = false;
    double milliseconds = 0;
};

std::vector<ThreadTime> threadTimes();

}  // namespace tolvane::bench
