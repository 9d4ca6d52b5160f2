#pragma once

#include <functional>

namespace tolvane::desktop {

/// What has to be done however the program ends: when the display goes away, the toolkit ends the process on the spot,
/// by `exit`, and nothing that stands on the stack is unmade. Then it is done within that call; an end in good order
/// is over before. One at a time. Main thread.
class LastDeed {
public:
    explicit LastDeed(std::function<void()> deed);
    ~LastDeed();
    LastDeed(const LastDeed&) = delete;
    LastDeed& operator=(const LastDeed&) = delete;

private:
    std::function<void()> deed_;
};

}  // namespace tolvane::desktop
