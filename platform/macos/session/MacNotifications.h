#pragma once

#include <memory>

#include "platform/Notifications.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/objc/RuntimeClass.h"

namespace tolvane::machost {

/// The user's notification center, and its delegate as long as this lives. One at a time.
/// A program outside of a bundle has no place in that center: there nothing is posted, asked or heard.
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
