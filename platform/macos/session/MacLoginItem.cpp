#include "platform/macos/session/MacLoginItem.h"

#include <utility>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

MacLoginItem::MacLoginItem(ObjC runtime) : runtime_(std::move(runtime)) {}

Id MacLoginItem::service() const { return runtime_->send(runtime_->classNamed("SMAppService"), "mainAppService"); }

LoginStatus MacLoginItem::status() const {
    const Pool pool(*runtime_);
    switch (runtime_->send<std::int64_t>(service(), "status")) {
        case 1:
            return LoginStatus::enabled;
        case 2:
            return LoginStatus::requiresApproval;
        case 3:
            return LoginStatus::notFound;
        default:
            return LoginStatus::notRegistered;
    }
}

std::optional<std::string> MacLoginItem::change(const char* selector) const {
    const Pool pool(*runtime_);
    Id error = nullptr;
    if (runtime_->send<bool>(service(), selector, static_cast<void*>(&error))) return std::nullopt;
    return Foundation::localizedDescription(*runtime_, error).value_or(std::string());
}

std::optional<std::string> MacLoginItem::enroll() { return change("registerAndReturnError:"); }

std::optional<std::string> MacLoginItem::withdraw() { return change("unregisterAndReturnError:"); }

void MacLoginItem::openSettings() {
    const Pool pool(*runtime_);
    runtime_->send<void>(runtime_->classNamed("SMAppService"), "openSystemSettingsLoginItems");
}

}  // namespace tolvane::machost
