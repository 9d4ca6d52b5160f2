#pragma once

namespace tolvane {

/// The desktop's list of programs that are in use. Main thread, with the application object made.
class Dock {
public:
    virtual ~Dock() = default;

    /// Whether the program stands among them and has a menu of its own, as it does while its window is open; else it is
    /// an icon in the tray and no more. Standing there, it also comes to the front.
    virtual void setInDock(bool inDock) = 0;
};

}  // namespace tolvane
