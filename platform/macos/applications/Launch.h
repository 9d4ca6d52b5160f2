#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/Clock.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Tells once whether the login started the program, as the system's first event says. One that does not come within
/// a few seconds is not waited for: then somebody started it. Main thread.
class Launch {
public:
    using Told = std::function<void(bool atLogin)>;

    /// Made before the event loop runs. `clock` outlives this.
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
