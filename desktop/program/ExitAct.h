#pragma once

#include <functional>

namespace tolvane::desktop {

/// What has to be done however the program ends. When the display goes away, the toolkit ends the process on the spot,
/// and nothing that stands on the stack is unmade: on X by `exit`, within which this is done; on Wayland without a call
/// that could be heard, but for the warning before it, at which this is done, on whichever thread that comes. An end in
/// good order is over before. One at a time. Main thread.
class ExitAct {
public:
    explicit ExitAct(std::function<void()> act);
    ~ExitAct();
    ExitAct(const ExitAct&) = delete;
    ExitAct& operator=(const ExitAct&) = delete;

private:
    std::function<void()> act_;
};

}  // namespace tolvane::desktop
