#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "base/Observers.h"
#include "platform/Applications.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/applications/OtherWindows.h"
#include "platform/linux/windows/FrontmostChoice.h"

namespace tolvane::linuxhost {

/// Which application is in front, from the source that knows the active window in this session (see FrontmostChoice).
/// Changes arrive as events; nothing wakes meanwhile. Main thread, with its event loop.
/// `canTell` decides whether rules quit applications. Where other programs' windows cannot be asked to close, a quit
/// would reach nobody: there it returns false, and still names the application it knows.
class SessionFrontmost : public Frontmost {
public:
    /// `applications` outlives this object.
    SessionFrontmost(LinuxApplications& applications, std::shared_ptr<OtherWindows> windows,
                     std::unique_ptr<FrontmostChoice> choice, std::string proc = "/proc");
    ~SessionFrontmost() override;

    bool canTell() const override;
    std::optional<FrontmostApplication> current() const override;
    Subscription onActivation(std::function<void(std::string)> activated) override;

private:
    std::optional<Text> appPath() const;
    std::optional<Text> appPathOf(const FrontWindow& window) const;
    void look();

    LinuxApplications& applications_;
    std::shared_ptr<OtherWindows> windows_;
    std::unique_ptr<FrontmostChoice> choice_;
    std::string proc_;
    Observers<std::string> observers_;
    std::optional<Text> last_;
    std::optional<std::chrono::steady_clock::time_point> nobodySince_;
    bool isWatching_ = false;
    Subscription changes_;
};

}  // namespace tolvane::linuxhost
