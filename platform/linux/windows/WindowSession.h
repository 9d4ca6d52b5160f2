#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/applications/OtherWindows.h"
#include "platform/linux/text/Environment.h"
#include "platform/linux/windows/KWinWindows.h"
#include "platform/linux/windows/WaylandToplevels.h"
#include "platform/linux/windows/XDisplay.h"

namespace tolvane::linuxhost {

/// The display server of the user's session, contacted from the first question on. Main thread.
class WindowSession : public OtherWindows {
public:
    /// `applications` outlives this object.
    WindowSession(const Environment& environment, LinuxApplications& applications);

    /// Null without an X server. In a Wayland session it knows X programs only.
    XDisplay* x11();
    /// Another connection to the same server.
    std::unique_ptr<XDisplay> connectX11() const { return XDisplay::connect(display_); }
    /// Null outside Wayland sessions, and where the compositor does not list other programs' windows.
    std::shared_ptr<WaylandToplevels> wayland();
    bool isWayland() const { return isWayland_; }
    /// For compositors that talk to KWin scripts only. Used for as long as another owner keeps it.
    void useKWin(std::weak_ptr<KWinWindows> kwin) { kwin_ = std::move(kwin); }

    bool canTell() override;
    bool any(const WindowOwner& owner) override;
    std::size_t askToClose(const WindowOwner& owner) override;

private:
    bool belongs(XDisplay::Window window, const WindowOwner& owner);
    bool isMeant(const std::string& application, const WindowOwner& owner) const;
    bool isMeantOfKWin(const FrontWindow& window, const WindowOwner& owner) const;
    std::shared_ptr<KWinWindows> kwin() const;

    LinuxApplications& applications_;
    std::string display_;
    std::string waylandDisplay_;
    std::string runtimeFolder_;
    bool isWayland_;
    bool isConnected_ = false;
    std::unique_ptr<XDisplay> x11_;
    std::shared_ptr<WaylandToplevels> wayland_;
    std::weak_ptr<KWinWindows> kwin_;

    void connect();
};

}  // namespace tolvane::linuxhost
