#include "platform/macos/session/MacDesktop.h"

#include <utility>

#include "base/files/Files.h"
#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

MacDesktop::MacDesktop(ObjC runtime) : runtime_(std::move(runtime)) {}

Id MacDesktop::workspace() const { return runtime_->send(runtime_->classNamed("NSWorkspace"), "sharedWorkspace"); }

void MacDesktop::reveal(const std::string& path) {
    const Pool pool(*runtime_);
    const bool folder = Files::isFolder(path);
    const Id file = folder ? Id{} : Foundation::string(*runtime_, path);
    const Id root = Foundation::string(*runtime_, folder ? path : std::string());
    runtime_->send<bool>(workspace(), "selectFile:inFileViewerRootedAtPath:", file, root);
}

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
