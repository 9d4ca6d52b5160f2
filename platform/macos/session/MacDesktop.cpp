#include "platform/macos/session/MacDesktop.h"

#include <utility>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

MacDesktop::MacDesktop(ObjC runtime) : runtime_(std::move(runtime)) {}

Id MacDesktop::workspace() const { return runtime_->send(runtime_->classNamed("NSWorkspace"), "sharedWorkspace"); }

void MacDesktop::open(const std::string& path) {
    const Pool pool(*runtime_);
    runtime_->send<bool>(workspace(), "openURL:", Foundation::fileURL(*runtime_, path));
}

void MacDesktop::copyText(const std::string& text) {
    const Pool pool(*runtime_);
    const Id pasteboard = runtime_->send(runtime_->classNamed("NSPasteboard"), "generalPasteboard");
    runtime_->send<std::int64_t>(pasteboard, "clearContents");
    runtime_->send<bool>(pasteboard, "setString:forType:", Foundation::string(*runtime_, text),
                         Foundation::string(*runtime_, "public.utf8-plain-text"));
}

}  // namespace tolvane::machost
