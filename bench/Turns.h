#pragma once

#include <string>
#include <vector>

namespace tolvane::bench {

/// One turn of the event loop: from the moment it wakes to the moment it looks for events again. So long a key press
/// would wait. Milliseconds.
struct Turn {
    double wall = 0;
    double cpu = 0;
};

/// Watches the loop of the main thread, which has to be glib's. One at a time; made on that thread.
class Turns {
public:
    Turns();
    ~Turns();
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

    /// The turns since the last call that took more than a tenth of a millisecond of either.
    std::vector<Turn> take();
};

/// What one thread of this program has taken of the processor.
struct ThreadTime {
    std::string name;
    bool isMain = false;
    double milliseconds = 0;
};

std::vector<ThreadTime> threadTimes();

}  // namespace tolvane::bench
