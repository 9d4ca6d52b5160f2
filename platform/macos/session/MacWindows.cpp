#include "platform/macos/session/MacWindows.h"

#include <algorithm>
#include <utility>

#include "platform/macos/objc/Foundation.h"
#include "platform/macos/objc/Observation.h"

namespace tolvane::machost {

namespace {

/// The bit of a window's occlusion state that means "partly visible".
constexpr std::uint64_t visibleBit = 2;

bool isStatusItem(const Runtime& runtime, Id window) {
    const auto name = Foundation::text(runtime, runtime.send(window, "className"));
    return name && name->find("StatusBarWindow") != std::string::npos;
}

bool isSeen(const Runtime& runtime, Id window) {
    if (!runtime.send<bool>(window, "isVisible")) return false;
    if ((runtime.send<std::uint64_t>(window, "occlusionState") & visibleBit) == 0) return false;
    return !isStatusItem(runtime, window);
}

}  // namespace

MacWindows::MacWindows(ObjC runtime) : runtime_(std::move(runtime)) {}

bool MacWindows::anyVisible() const {
    const Pool pool(*runtime_);
    const Id application = runtime_->send(runtime_->classNamed("NSApplication"), "sharedApplication");
    const auto windows = Foundation::elements(*runtime_, runtime_->send(application, "windows"));
    return std::ranges::any_of(windows, [this](Id window) { return isSeen(*runtime_, window); });
}

Subscription MacWindows::onChange(std::function<void()> changed) {
    const Pool pool(*runtime_);
    const Id center = runtime_->send(runtime_->classNamed("NSNotificationCenter"), "defaultCenter");
    return observe(runtime_, center, "NSWindowDidChangeOcclusionStateNotification",
                   [changed = std::move(changed)](Id) { changed(); });
}

}  // namespace tolvane::machost
