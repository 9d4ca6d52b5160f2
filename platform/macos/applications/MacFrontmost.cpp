#include "platform/macos/applications/MacFrontmost.h"

#include <utility>

#include "platform/macos/objc/Foundation.h"
#include "platform/macos/objc/Observation.h"

namespace tolvane::machost {

namespace {

Id workspace(const Runtime& runtime) { return runtime.send(runtime.classNamed("NSWorkspace"), "sharedWorkspace"); }

std::optional<std::string> bundlePathOf(const Runtime& runtime, Id application) {
    return Foundation::path(runtime, runtime.send(application, "bundleURL"));
}

std::optional<std::string> activatedPath(const Runtime& runtime, Id notification) {
    const Pool pool(runtime);
    const Id details = runtime.send(notification, "userInfo");
    return bundlePathOf(
        runtime, runtime.send(details, "objectForKey:", Foundation::string(runtime, "NSWorkspaceApplicationKey")));
}

}  // namespace

MacFrontmost::MacFrontmost(ObjC runtime) : runtime_(std::move(runtime)) {}

std::optional<FrontmostApplication> MacFrontmost::current() const {
    const Pool pool(*runtime_);
    const Id application = runtime_->send(workspace(*runtime_), "frontmostApplication");
    auto path = bundlePathOf(*runtime_, application);
    if (!path) return std::nullopt;
    return FrontmostApplication{.appPath = std::move(*path),
                                .appID = Foundation::text(*runtime_, runtime_->send(application, "bundleIdentifier"))};
}

Subscription MacFrontmost::onActivation(std::function<void(std::string appPath)> activated) {
    const Pool pool(*runtime_);
    const Id center = runtime_->send(workspace(*runtime_), "notificationCenter");
    return observe(runtime_, center, "NSWorkspaceDidActivateApplicationNotification",
                   [runtime = runtime_, activated = std::move(activated)](Id notification) {
                       if (auto path = activatedPath(*runtime, notification)) activated(std::move(*path));
                   });
}

}  // namespace tolvane::machost
