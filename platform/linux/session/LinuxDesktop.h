#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Desktop.h"
#include "platform/linux/applications/DesktopLauncher.h"

namespace tolvane::linuxhost {

/// Small services of a Linux desktop: the user's programs by file type, and the toolkit's clipboard. Main thread.
class LinuxDesktop : public Desktop {
public:
    using CopyText = std::function<void(const std::string& text)>;

    LinuxDesktop(std::shared_ptr<Launcher> launcher, CopyText copyText);

    /// A folder opens in the file manager.
    void open(const std::string& path) override;
    void copyText(const std::string& text) override;

private:
    std::shared_ptr<Launcher> launcher_;
    CopyText copyText_;
};

}  // namespace tolvane::linuxhost
