#pragma once

#include <functional>

namespace tolvane::desktop {

/// Runs an act however the process ends. When the display goes away, the toolkit ends the process on the spot, without
/// unwinding the stack. On X it calls `exit`, so an exit handler runs the act. On Wayland it leaves no such hook, so
/// the act runs when the toolkit logs the warning before it, on whichever thread that is. In an orderly shutdown this
/// object is destroyed first, and nothing runs. One instance at a time. Main thread.
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
