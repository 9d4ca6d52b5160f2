#include "platform/linux/windows/WindowSession.h"

#include <algorithm>

namespace tolvane::linuxhost {

WindowSession::WindowSession(const Environment& environment, LinuxApplications& applications)
    : applications_(applications),
      display_(environment("DISPLAY").value_or("")),
      waylandDisplay_(environment("WAYLAND_DISPLAY").value_or("")),
      runtimeFolder_(environment("XDG_RUNTIME_DIR").value_or("")),
      isWayland_(!waylandDisplay_.empty() || environment("XDG_SESSION_TYPE") == "wayland") {
    if (isWayland_ && waylandDisplay_.empty()) waylandDisplay_ = "wayland-0";
}

void WindowSession::connect() {
    if (std::exchange(isConnected_, true)) return;
    x11_ = XDisplay::connect(display_);
    isWayland_ = isWayland_ || (x11_ && x11_->isGuest());
    if (isWayland_) wayland_ = WaylandToplevels::connect(waylandDisplay_, runtimeFolder_);
}

XDisplay* WindowSession::x11() {
    connect();
    return x11_ && x11_->isAlive() ? x11_.get() : nullptr;
}

std::shared_ptr<WaylandToplevels> WindowSession::wayland() {
    connect();
    return wayland_ && wayland_->isAlive() ? wayland_ : nullptr;
}

bool WindowSession::canTell() {
    connect();
    return isWayland_ ? wayland() != nullptr || kwin() != nullptr : x11() != nullptr;
}

std::shared_ptr<KWinWindows> WindowSession::kwin() const {
    auto kwin = kwin_.lock();
    return kwin && kwin->canTell() ? kwin : nullptr;
}

/// An X program in a sandbox gives KWin a pid that is not its own, so its names count as well.
bool WindowSession::isMeantOfKWin(const FrontWindow& window, const WindowOwner& owner) const {
    return (window.pid && owner.pids.contains(*window.pid)) ||
           std::ranges::any_of(window.names, [&](const std::string& name) { return isMeant(name, owner); });
}

bool WindowSession::belongs(XDisplay::Window window, const WindowOwner& owner) {
    const auto pid = x11_->owner(window);
    return pid && owner.pids.contains(*pid);
}

bool WindowSession::isMeant(const std::string& application, const WindowOwner& owner) const {
    return applications_.identifierOfWindow(application) == owner.identifier;
}

bool WindowSession::any(const WindowOwner& owner) {
    if (const auto toplevels = wayland()) {
        const auto all = toplevels->all();
        return std::ranges::any_of(all, [&](const auto& each) { return isMeant(each.application, owner); });
    }
    if (const auto kwin = this->kwin())
        return kwin->any([&](const FrontWindow& window) { return isMeantOfKWin(window, owner); });
    if (x11() == nullptr) return false;
    const auto all = x11_->windows();
    return std::ranges::any_of(all, [&](XDisplay::Window window) { return belongs(window, owner); });
}

std::size_t WindowSession::askToClose(const WindowOwner& owner) {
    if (const auto toplevels = wayland())
        return toplevels->askToClose([&](const std::string& application) { return isMeant(application, owner); });
    if (const auto kwin = this->kwin())
        return kwin->askToClose([&](const FrontWindow& window) { return isMeantOfKWin(window, owner); });
    if (x11() == nullptr) return 0;
    std::size_t asked = 0;
    for (const XDisplay::Window window : x11_->windows()) {
        if (belongs(window, owner) && x11_->askToClose(window)) ++asked;
    }
    return asked;
}

}  // namespace tolvane::linuxhost
