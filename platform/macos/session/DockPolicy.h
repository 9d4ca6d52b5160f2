#pragma once

#include "platform/Dock.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The application's activation policy: regular while it is in the Dock, else accessory.
class DockPolicy : public Dock {
public:
    explicit DockPolicy(ObjC runtime);

    void setInDock(bool inDock) override;

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
