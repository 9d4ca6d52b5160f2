#include "platform/macos/session/MacNotifications.h"

#include <map>
#include <utility>

#include "platform/macos/objc/Block.h"
#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

/// Alerts and sounds: the permissions to ask for.
constexpr std::uint64_t alertAndSound = 6;
/// Banner and list: how notifications appear that arrive while the program is in front.
constexpr std::uint64_t bannerAndList = 24;

/// The center aborts a program without a bundle identifier.
bool standsInBundle(const Runtime& runtime) {
    const Pool pool(runtime);
    const Id bundle = runtime.send(runtime.classNamed("NSBundle"), "mainBundle");
    return runtime.send(bundle, "bundleIdentifier") != nullptr;
}

Id contentOf(const Runtime& runtime, const Notification& notification) {
    const Id made = runtime.send(runtime.classNamed("UNMutableNotificationContent"), "new");
    const Id content = runtime.send(made, "autorelease");
    runtime.send<void>(content, "setTitle:", Foundation::string(runtime, notification.title));
    runtime.send<void>(content, "setBody:", Foundation::string(runtime, notification.body));
    if (!notification.section) return content;
    const Id details = runtime.send(runtime.classNamed("NSDictionary"),
                                    "dictionaryWithObject:forKey:", Foundation::string(runtime, *notification.section),
                                    Foundation::string(runtime, "section"));
    runtime.send<void>(content, "setUserInfo:", details);
    return content;
}

std::optional<std::string> sectionOf(const Runtime& runtime, Id response) {
    const Pool pool(runtime);
    const Id request = runtime.send(runtime.send(response, "notification"), "request");
    const Id details = runtime.send(runtime.send(request, "content"), "userInfo");
    return Foundation::textIfString(runtime,
                                    runtime.send(details, "objectForKey:", Foundation::string(runtime, "section")));
}

}  // namespace

/// Listeners for clicks. Main thread.
class MacNotifications::Listeners {
public:
    int add(Clicked clicked) {
        listeners_.emplace(++latest_, std::move(clicked));
        return latest_;
    }
    void remove(int number) { listeners_.erase(number); }
    void tell(const std::optional<std::string>& section) const {
        const auto present = listeners_;
        for (const auto& [number, clicked] : present) clicked(section);
    }

private:
    std::map<int, Clicked> listeners_;
    int latest_ = 0;
};

MacNotifications::MacNotifications(ObjC runtime, OnMain onMain)
    : runtime_(std::move(runtime)), hasCenter_(standsInBundle(*runtime_)), listeners_(std::make_shared<Listeners>()) {
    if (hasCenter_) becomeDelegate(onMain);
}

MacNotifications::~MacNotifications() {
    if (!delegate_) return;
    const Pool pool(*runtime_);
    runtime_->send<void>(center(), "setDelegate:", Id{});
}

Id MacNotifications::center() const {
    return runtime_->send(runtime_->classNamed("UNUserNotificationCenter"), "currentNotificationCenter");
}

/// The center calls on its own threads.
void MacNotifications::becomeDelegate(const OnMain& onMain) {
    const Pool pool(*runtime_);
    Block<Id, Id, Id, Id> willPresent(*runtime_,
                                      [](Id, Id, Id, Id present) { callBlock<std::uint64_t>(present, bannerAndList); });
    Block<Id, Id, Id, Id> didReceive(
        *runtime_, [runtime = runtime_, onMain, weak = std::weak_ptr(listeners_)](Id, Id, Id response, Id done) {
            onMain([weak, section = sectionOf(*runtime, response)] {
                if (const auto listeners = weak.lock()) listeners->tell(section);
            });
            callBlock(done);
        });
    const std::vector<RuntimeClass::Method> methods = {
        {"userNotificationCenter:willPresentNotification:withCompletionHandler:", willPresent.get(), "v@:@@@?"},
        {"userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:", didReceive.get(), "v@:@@@?"}};
    delegate_ = std::make_unique<RuntimeClass>(runtime_, "TolvaneNotificationDelegate", methods);
    runtime_->send<void>(center(), "setDelegate:", delegate_->object());
}

void MacNotifications::post(const Notification& notification) {
    if (!hasCenter_) return;
    const Pool pool(*runtime_);
    const Id request =
        runtime_->send(runtime_->classNamed("UNNotificationRequest"),
                       "requestWithIdentifier:content:trigger:", Foundation::string(*runtime_, notification.identifier),
                       contentOf(*runtime_, notification), Id{});
    runtime_->send<void>(center(), "addNotificationRequest:withCompletionHandler:", request, Id{});
}

void MacNotifications::requestPermission() {
    if (!hasCenter_) return;
    const Pool pool(*runtime_);
    // The center requires a completion handler; its result does not matter.
    Block<bool, Id> answered(*runtime_, [](bool, Id) {});
    runtime_->send<void>(center(), "requestAuthorizationWithOptions:completionHandler:", alertAndSound, answered.get());
}

Subscription MacNotifications::onClick(Clicked clicked) {
    const int number = listeners_->add(std::move(clicked));
    return Subscription([weak = std::weak_ptr(listeners_), number] {
        if (const auto listeners = weak.lock()) listeners->remove(number);
    });
}

}  // namespace tolvane::machost
