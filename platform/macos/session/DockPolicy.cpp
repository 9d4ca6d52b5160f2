#include "platform/macos/session/DockPolicy.h"

#include <utility>

namespace tolvane::machost {

namespace {

constexpr std::int64_t regular = 0;
constexpr std::int64_t accessory = 1;

}  // namespace

DockPolicy::DockPolicy(ObjC runtime) : runtime_(std::move(runtime)) {}

void DockPolicy::setInDock(bool inDock) {
    const Pool pool(*runtime_);
    const Id application = runtime_->send(runtime_->classNamed("NSApplication"), "sharedApplication");
    runtime_->send<bool>(application, "setActivationPolicy:", inDock ? regular : accessory);
    if (inDock) runtime_->send<void>(application, "activate");
}

}  // namespace tolvane::machost
