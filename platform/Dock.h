#pragma once

namespace tolvane {

/// The desktop's list of programs in use. Main thread, once the application object exists.
class Dock {
public:
    virtual ~Dock() = default;

    /// Whether the program is in that list and has a menu of its own, as while its window is open; otherwise it is only
    /// an icon in the tray. Entering the list also brings the program to the front.
    virtual void setInDock(bool inDock) = 0;
};

}  // namespace tolvane
