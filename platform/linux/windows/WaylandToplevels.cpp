#include "platform/linux/windows/WaylandToplevels.h"

#include <poll.h>
#include <wayland-client-core.h>
#include <wayland-client-protocol.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <map>
#include <span>
#include <string_view>
#include <utility>

#include "base/Observers.h"
#include "platform/linux/windows/ForeignToplevelProtocol.h"

namespace tolvane::linuxhost {

namespace {

using ClockNow = std::chrono::steady_clock;

struct Disconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
};

std::string socketPath(const std::string& display, const std::string& runtimeFolder) {
    return display.starts_with('/') ? display : runtimeFolder + "/" + display;
}

struct Window {
    WaylandToplevels::Toplevel now;
    WaylandToplevels::Toplevel next;
    bool isKnown = false;
};

}  // namespace

/// The connection and everything the compositor has reported. Callbacks carry a pointer to it, so it must not move.
class WaylandToplevels::Session {
public:
    explicit Session(wl_display* display) : display_(display) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    ~Session() {
        notifier_.reset();
        for (const auto& [handle, toplevel] : toplevels_) wl_proxy_destroy(handle);
        if (manager_ != nullptr) wl_proxy_destroy(manager_);
        if (registry_ != nullptr) wl_registry_destroy(registry_);
    }

    /// One round trip to find the manager, one to receive the windows.
    bool begin(std::chrono::milliseconds limit) {
        registry_ = wl_display_get_registry(display_.get());
        static constexpr wl_registry_listener listener = {.global = found,
                                                          .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
        if (registry_ == nullptr || wl_registry_add_listener(registry_, &listener, this) != 0) return false;
        const auto deadline = ClockNow::now() + limit;
        return roundTrip(deadline) && manager_ != nullptr && roundTrip(deadline) && isAlive_;
    }

    bool isAlive() const { return isAlive_; }

    /// The toolkit's own loop must exist by now.
    void watch() {
        if (notifier_ || !isAlive_) return;
        notifier_ = std::make_unique<QSocketNotifier>(wl_display_get_fd(display_.get()), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
        readNow();
    }

    /// Takes what has arrived, without waiting.
    void readNow() {
        if (isAlive_ && !readWithin(std::chrono::milliseconds(0))) lose();
        // A caller that only asks must not swallow events that observers wait for.
        if (hasNews_ && notifier_) QMetaObject::invokeMethod(notifier_.get(), [this] { tell(); }, Qt::QueuedConnection);
    }

    std::map<wl_proxy*, Window>& windows() { return toplevels_; }
    void close(wl_proxy* handle) {
        wl_proxy_marshal(handle, ForeignToplevel::closeRequest);
        wl_display_flush(display_.get());
    }

    Observers<>& observers() { return observers_; }

private:
    static void found(void* data, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
        auto* self = static_cast<Session*>(data);
        if (self->manager_ != nullptr || interface != std::string_view(ForeignToplevel::managerInterface.name)) return;
        self->manager_ = static_cast<wl_proxy*>(
            wl_registry_bind(registry, name, &ForeignToplevel::managerInterface, ForeignToplevel::version));
        listen(self->manager_, managerListener, self);
    }

    template <typename Listener>
    static void listen(wl_proxy* proxy, const Listener& listener, Session* self) {
        // libwayland takes an untyped table of functions and calls each with its message's own arguments.
        auto* table = reinterpret_cast<void (**)()>(const_cast<Listener*>(&listener));
        if (proxy != nullptr) wl_proxy_add_listener(proxy, table, self);
    }

    static Window& window(void* data, wl_proxy* handle) { return static_cast<Session*>(data)->toplevels_[handle]; }

    void told(wl_proxy* handle) {
        Window& window = toplevels_[handle];
        const bool changed = window.next.isActive != window.now.isActive || !window.isKnown ||
                             (window.next.isActive && window.next.application != window.now.application);
        window.now = window.next;
        window.isKnown = true;
        hasNews_ = hasNews_ || changed;
    }

    void drop(wl_proxy* handle) {
        toplevels_.erase(handle);
        wl_proxy_marshal(handle, ForeignToplevel::destroyRequest);
        wl_proxy_destroy(handle);
        hasNews_ = true;
    }

    static bool isActivated(const wl_array& states) {
        const std::span<const std::uint32_t> list(static_cast<const std::uint32_t*>(states.data),
                                                  states.size / sizeof(std::uint32_t));
        return std::ranges::find(list, ForeignToplevel::activatedState) != list.end();
    }

    void read() {
        readNow();
        tell();
    }

    void tell() {
        if (std::exchange(hasNews_, false)) observers_.tell();
    }

    void lose() {
        isAlive_ = false;
        if (notifier_) notifier_->setEnabled(false);
        for (auto& [handle, window] : toplevels_) window.now.isActive = false;
        hasNews_ = true;
    }

    /// False when the connection is gone.
    bool readWithin(std::chrono::milliseconds wait) {
        while (wl_display_prepare_read(display_.get()) != 0) {
            if (wl_display_dispatch_pending(display_.get()) < 0) return false;
        }
        wl_display_flush(display_.get());
        pollfd ready{.fd = wl_display_get_fd(display_.get()), .events = POLLIN, .revents = 0};
        const int count = ::poll(&ready, 1, static_cast<int>(wait.count()));
        if (count <= 0) {
            wl_display_cancel_read(display_.get());
            return count == 0 || errno == EINTR;
        }
        return wl_display_read_events(display_.get()) == 0 && wl_display_dispatch_pending(display_.get()) >= 0;
    }

    bool roundTrip(ClockNow::time_point deadline) {
        bool answered = false;
        static constexpr wl_callback_listener listener = {
            .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
        wl_callback* callback = wl_display_sync(display_.get());
        wl_callback_add_listener(callback, &listener, &answered);
        bool isReading = true;
        while (!answered && isReading && ClockNow::now() < deadline) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - ClockNow::now());
            isReading = readWithin(left);
        }
        wl_callback_destroy(callback);
        return answered;
    }

    static const ForeignToplevel::ManagerListener managerListener;
    static const ForeignToplevel::HandleListener handleListener;

    std::unique_ptr<wl_display, Disconnect> display_;
    wl_registry* registry_ = nullptr;
    wl_proxy* manager_ = nullptr;
    std::map<wl_proxy*, Window> toplevels_;
    Observers<> observers_;
    std::unique_ptr<QSocketNotifier> notifier_;
    bool isAlive_ = true;
    bool hasNews_ = false;
};

const ForeignToplevel::ManagerListener WaylandToplevels::Session::managerListener = {
    .toplevel =
        [](void* data, wl_proxy*, wl_proxy* handle) {
            window(data, handle) = {};
            listen(handle, handleListener, static_cast<Session*>(data));
        },
    .finished = [](void* data, wl_proxy*) { static_cast<Session*>(data)->lose(); },
};

const ForeignToplevel::HandleListener WaylandToplevels::Session::handleListener = {
    .title = [](void*, wl_proxy*, const char*) {},
    .application = [](void* data, wl_proxy* handle, const char* name) { window(data, handle).next.application = name; },
    .outputEnter = [](void*, wl_proxy*, wl_proxy*) {},
    .outputLeave = [](void*, wl_proxy*, wl_proxy*) {},
    .state = [](void* data, wl_proxy* handle,
                wl_array* states) { window(data, handle).next.isActive = isActivated(*states); },
    .done = [](void* data, wl_proxy* handle) { static_cast<Session*>(data)->told(handle); },
    .closed = [](void* data, wl_proxy* handle) { static_cast<Session*>(data)->drop(handle); },
};

std::shared_ptr<WaylandToplevels> WaylandToplevels::connect(const std::string& display,
                                                            const std::string& runtimeFolder,
                                                            std::chrono::milliseconds limit) {
    if (display.empty()) return nullptr;
    wl_display* connection = wl_display_connect(socketPath(display, runtimeFolder).c_str());
    if (connection == nullptr) return nullptr;
    auto session = std::make_unique<Session>(connection);
    if (!session->begin(limit)) return nullptr;
    return std::shared_ptr<WaylandToplevels>(new WaylandToplevels(std::move(session)));
}

WaylandToplevels::WaylandToplevels(std::unique_ptr<Session> session) : session_(std::move(session)) {}

WaylandToplevels::~WaylandToplevels() = default;

bool WaylandToplevels::isAlive() const { return session_->isAlive(); }

std::vector<WaylandToplevels::Toplevel> WaylandToplevels::all() {
    session_->readNow();
    std::vector<Toplevel> known;
    for (const auto& [handle, window] : session_->windows()) {
        if (window.isKnown) known.push_back(window.now);
    }
    return known;
}

std::optional<std::string> WaylandToplevels::activeApplication() {
    for (const Toplevel& toplevel : all()) {
        if (toplevel.isActive) return toplevel.application;
    }
    return std::nullopt;
}

std::size_t WaylandToplevels::askToClose(const std::function<bool(const std::string& application)>& isMeant) {
    session_->readNow();
    std::size_t asked = 0;
    for (const auto& [handle, window] : session_->windows()) {
        if (!window.isKnown || !isMeant(window.now.application)) continue;
        session_->close(handle);
        ++asked;
    }
    return asked;
}

Subscription WaylandToplevels::onChange(std::function<void()> changed) {
    session_->watch();
    return session_->observers().add(std::move(changed));
}

}  // namespace tolvane::linuxhost
