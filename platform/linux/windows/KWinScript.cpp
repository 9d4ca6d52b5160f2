#include "platform/linux/windows/KWinScript.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"

namespace tolvane::linuxhost::KWinScript {

std::string text(const std::string& listener) {
    return "(function () {\n"
           "    function text(value) { return value === undefined || value === null ? '' : String(value); }\n"
           "    function tell(window) {\n"
           "        var known = window ? [window.pid, window.desktopFileName, window.resourceClass] : [];\n"
           "        callDBus('" +
           listener + "', '" + path + "', '" + interface + "', '" + method +
           "',\n"
           "                 text(known[0]), text(known[1]), text(known[2]));\n"
           "    }\n"
           "    var isNew = workspace.windowActivated !== undefined;\n"
           "    (isNew ? workspace.windowActivated : workspace.clientActivated).connect(tell);\n"
           "    tell(isNew ? workspace.activeWindow : workspace.activeClient);\n"
           "})();\n";
}

std::string write(const std::string& folder, const std::string& text) {
    std::string file = folder + "/tolvane-frontmost-XXXXXX.js";
    constexpr int suffixLength = 3;
    const FileDescriptor descriptor(::mkostemps(file.data(), suffixLength, O_CLOEXEC));
    if (descriptor.get() < 0) return {};
    if (::write(descriptor.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size())) return file;
    ::unlink(file.c_str());
    return {};
}

}  // namespace tolvane::linuxhost::KWinScript
