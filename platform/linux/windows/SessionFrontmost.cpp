#include "platform/linux/windows/SessionFrontmost.h"

#include <utility>

#include "platform/linux/ExecutableOf.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::chrono::milliseconds longestMove{500};

}  // namespace

SessionFrontmost::SessionFrontmost(std::shared_ptr<WindowSession> session, std::string proc)
    : session_(std::move(session)), proc_(std::move(proc)) {}

SessionFrontmost::~SessionFrontmost() = default;

bool SessionFrontmost::canTell() const {
    if (session_->wayland()) return true;
    const XDisplay* display = session_->x11();
    return !session_->isWayland() && display != nullptr && display->tellsActive();
}

std::optional<Text> SessionFrontmost::bundlePathOfX11() const {
    const XDisplay* display = session_->x11();
    const auto window = display == nullptr || session_->isWayland() ? std::nullopt : display->active();
    const auto pid = window ? display->owner(*window) : std::nullopt;
    return pid ? session_->applications().bundlePath(*pid, executableOf(proc_, *pid)) : std::nullopt;
}

std::optional<Text> SessionFrontmost::bundlePath() const {
    const auto toplevels = session_->wayland();
    if (!toplevels) return bundlePathOfX11();
    const auto application = toplevels->activeApplication();
    return application ? session_->applications().pathOfWindow(*application) : std::nullopt;
}

std::optional<FrontmostApplication> SessionFrontmost::current() const {
    const auto path = bundlePath();
    if (!path) return std::nullopt;
    const auto identifier = session_->applications().bundleIdentifier(path->view());
    return FrontmostApplication{
        .bundlePath = path->str(),
        .bundleIdentifier = identifier ? std::optional(identifier->str()) : std::nullopt,
    };
}

Subscription SessionFrontmost::onActivation(std::function<void(std::string)> activated) {
    watch();
    return observers_.add(std::move(activated));
}

void SessionFrontmost::watch() {
    if (std::exchange(isWatching_, true)) return;
    if (const auto toplevels = session_->wayland()) {
        toplevels_ = toplevels->onChange([this] { look(); });
    } else if (!session_->isWayland() && session_->x11() != nullptr) {
        watchX11();
    }
    last_ = bundlePath();
}

/// Events come over a connection of their own: a question on the same one could swallow them.
void SessionFrontmost::watchX11() {
    events_ = session_->connectX11();
    if (!events_) return;
    notifier_ = std::make_unique<QSocketNotifier>(events_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readX11(); });
    events_->watchActive();
}

void SessionFrontmost::readX11() {
    if (events_->readEvents()) look();
    if (!events_->isAlive()) notifier_->setEnabled(false);
}

/// An application that keeps the front while its windows change is not told again. Window managers have nobody in front
/// for a moment whenever the focus moves; whoever comes back after a longer while has come to the front again.
void SessionFrontmost::look() {
    const auto path = bundlePath();
    const auto now = std::chrono::steady_clock::now();
    if (!path) {
        if (!nobodySince_) nobodySince_ = now;
        return;
    }
    const bool wasAway = nobodySince_ && now - *nobodySince_ > longestMove;
    nobodySince_.reset();
    if (path == last_ && !wasAway) return;
    last_ = path;
    observers_.tell(path->str());
}

}  // namespace tolvane::linuxhost
