#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/Clock.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Reports once whether the login started the program, according to the system's first event. If no event arrives
/// within a few seconds, the user started it. Main thread.
class Launch {
public:
    using Told = std::function<void(bool atLogin)>;

    /// Made before the event loop runs. `clock` outlives this object.
    Launch(const ObjC& runtime, Clock& clock, Told told);
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;

private:
    void tell(bool atLogin);

    Told told_;
    Subscription news_;
    Subscription patience_;
};

}  // namespace tolvane::machost
