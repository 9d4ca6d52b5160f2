#pragma once

#include "platform/Windows.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The window server's own view: a completely covered window is not visible, nor is one on another space or a minimised
/// one. The menu bar's item is a window too and always there, so it does not count. Main thread, once the application
/// object exists.
class MacWindows : public Windows {
public:
    explicit MacWindows(ObjC runtime);

    bool anyVisible() const override;
    Subscription onChange(std::function<void()> changed) override;

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
