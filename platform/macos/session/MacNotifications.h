#pragma once

#include <memory>

#include "platform/Notifications.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/objc/RuntimeClass.h"

namespace tolvane::machost {

/// The user's notification center, with this object as its delegate. One at a time. A program outside a bundle has no
/// place in that center: it posts, asks and receives nothing.
class MacNotifications : public Notifications {
public:
    MacNotifications(ObjC runtime, OnMain onMain);
    MacNotifications(const MacNotifications&) = delete;
    MacNotifications& operator=(const MacNotifications&) = delete;
    ~MacNotifications() override;

    void post(const Notification& notification) override;
    void requestPermission() override;
    Subscription onClick(Clicked clicked) override;

private:
    class Listeners;

    Id center() const;
    void becomeDelegate(const OnMain& onMain);

    ObjC runtime_;
    bool hasCenter_;
    std::shared_ptr<Listeners> listeners_;
    std::unique_ptr<RuntimeClass> delegate_;
};

}  // namespace tolvane::machost
