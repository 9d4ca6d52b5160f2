#include "platform/linux/windows/X11Frontmost.h"

namespace tolvane::linuxhost {

X11Frontmost::X11Frontmost(std::shared_ptr<WindowSession> session) : session_(std::move(session)) {}

bool X11Frontmost::canTell() const {
    const XDisplay* display = session_->x11();
    return display != nullptr && display->tellsActive();
}

std::optional<FrontWindow> X11Frontmost::inFront() const {
    const XDisplay* display = session_->x11();
    const auto window = display == nullptr ? std::nullopt : display->active();
    if (!window) return std::nullopt;
    return FrontWindow{.pid = display->owner(*window)};
}

Subscription X11Frontmost::onChange(std::function<void()> changed) {
    if (!events_) watch();
    return observers_.add(std::move(changed));
}

void X11Frontmost::watch() {
    events_ = session_->connectX11();
    if (!events_) return;
    notifier_ = std::make_unique<QSocketNotifier>(events_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
    events_->watchActive();
}

void X11Frontmost::read() {
    const bool hasNews = events_->readEvents();
    if (!events_->isAlive()) notifier_->setEnabled(false);
    if (hasNews) observers_.tell();
}

}  // namespace tolvane::linuxhost
