#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Subscription.h"

namespace tolvane::linuxhost {

/// The windows of a Wayland session that offers zwlr_foreign_toplevel_manager_v1 (sway, Wayfire, labwc, river, COSMIC
/// in part). GNOME and KDE do not offer it to ordinary programs. It knows applications, not processes. Main thread,
/// with its event loop; nothing runs while the session is quiet.
class WaylandToplevels {
public:
    struct Toplevel {
        /// The application's name according to the window: a desktop entry's name, or an X11 class.
        std::string application;
        bool isActive = false;
    };

    /// Null when the compositor cannot be reached, does not answer in time or does not offer the protocol. `display` as
    /// in WAYLAND_DISPLAY, `runtimeFolder` as in XDG_RUNTIME_DIR.
    static std::shared_ptr<WaylandToplevels> connect(const std::string& display, const std::string& runtimeFolder,
                                                     std::chrono::milliseconds limit = std::chrono::seconds(2));
    WaylandToplevels(const WaylandToplevels&) = delete;
    WaylandToplevels& operator=(const WaylandToplevels&) = delete;
    ~WaylandToplevels();

    /// False once the compositor has gone.
    bool isAlive() const;
    std::vector<Toplevel> all();
    /// The active window's application; nullopt when no window is active.
    std::optional<std::string> activeApplication();
    /// Asks every window for which `isMeant` holds to close. Returns how many were asked.
    std::size_t askToClose(const std::function<bool(const std::string& application)>& isMeant);
    /// Calls back whenever another window may have become active.
    Subscription onChange(std::function<void()> changed);

private:
    class Session;
    explicit WaylandToplevels(std::unique_ptr<Session> session);
    std::unique_ptr<Session> session_;
};

}  // namespace tolvane::linuxhost
