#pragma once

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Whether the program stands in the Dock and has a menu of its own, as it does while its window is open; without one
/// it is a menu-bar item and no more. Main thread, with the application object made.
class DockPolicy {
public:
    explicit DockPolicy(ObjC runtime);

    /// Standing in the Dock, the program also comes to the front.
    void setInDock(bool inDock);

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
