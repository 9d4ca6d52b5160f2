#include "platform/linux/bus/SessionBus.h"

#include <sys/stat.h>

#include <map>
#include <vector>

#include "base/Observers.h"

namespace tolvane::linuxhost {

namespace {

bool isSocket(const std::string& path) {
    struct stat facts{};
    return ::stat(path.c_str(), &facts) == 0 && S_ISSOCK(facts.st_mode);
}

/// A restarted bus is back at once; one that stays away is not worth many attempts.
constexpr unsigned firstLookMilliseconds = 100;
constexpr int mostLooks = 12;

const char* orNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

/// Outlives the bus object while GLib still has calls under way.
class SessionBus::State : public std::enable_shared_from_this<State> {
public:
    State(std::string address, std::chrono::milliseconds connectLimit)
        : address_(std::move(address)), connectLimit_(connectLimit) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { end(); }

    Observers<GDBusConnection*> connections;

    bool hasAddress() const { return !address_.empty(); }

    void whenConnected(Connected connected) {
        // Pending calls learn that a bus died before its "closed" signal arrives.
        if (connection_ && g_dbus_connection_is_closed(connection_.get()) != FALSE) lose();
        if (connection_ || address_.empty()) return connected(connection_.get());
        waiting_.push_back(std::move(connected));
        if (!cancellable_) connect();
    }

    void call(Call call, Answered answered) {
        auto shared = std::make_shared<Call>(std::move(call));
        whenConnected([shared, answered = std::move(answered)](GDBusConnection* connection) {
            if (connection == nullptr) return answered({.error = "There is no session bus."});
            send(connection, *shared, answered);
        });
    }

    Variant answerTo(const Call& call) const {
        if (!connection_) return nullptr;
        return Variant(g_dbus_connection_call_sync(
            connection_.get(), call.destination.c_str(), call.path.c_str(), call.interface.c_str(), call.method.c_str(),
            call.arguments.get(), nullptr, flagsOf(call), static_cast<int>(call.limit.count()), nullptr, nullptr));
    }

    std::uint64_t listen(Source source, Signalled signalled) {
        Listener& listener = listeners_[++last_];
        listener.source = std::move(source);
        listener.signalled = std::make_shared<Signalled>(std::move(signalled));
        if (connection_) subscribe(listener);
        return last_;
    }

    void forget(std::uint64_t number) {
        const auto found = listeners_.find(number);
        if (found == listeners_.end()) return;
        if (connection_ && found->second.subscription != 0)
            g_dbus_connection_signal_unsubscribe(connection_.get(), found->second.subscription);
        listeners_.erase(found);
    }

    void end() {
        stop(timeout_);
        stop(look_);
        if (cancellable_) g_cancellable_cancel(cancellable_.get());
        waiting_.clear();
        drop();
        listeners_.clear();
    }

private:
    struct Listener {
        Source source;
        std::shared_ptr<Signalled> signalled;
        unsigned subscription = 0;
    };

    static void stop(unsigned& source) {
        if (source != 0) g_source_remove(std::exchange(source, 0));
    }

    void connect() {
        stop(look_);
        cancellable_.reset(g_cancellable_new());
        timeout_ = g_timeout_add(static_cast<unsigned>(connectLimit_.count()), giveUp, this);
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        g_dbus_connection_new_for_address(address_.c_str(), flags, nullptr, cancellable_.get(), connected,
                                          new std::weak_ptr<State>(weak_from_this()));
    }

    static int giveUp(void* data) {
        auto* self = static_cast<State*>(data);
        self->timeout_ = 0;
        g_cancellable_cancel(self->cancellable_.get());
        return G_SOURCE_REMOVE;
    }

    static void connected(GObject*, GAsyncResult* result, void* data) {
        const std::unique_ptr<std::weak_ptr<State>> weak(static_cast<std::weak_ptr<State>*>(data));
        GObjectOwned<GDBusConnection> connection(g_dbus_connection_new_for_address_finish(result, nullptr));
        if (const auto self = weak->lock()) self->settle(std::move(connection));
    }

    void settle(GObjectOwned<GDBusConnection> connection) {
        stop(timeout_);
        cancellable_.reset();
        connection_ = std::move(connection);
        if (connection_) {
            looks_ = 0;
            closed_ = g_signal_connect(connection_.get(), "closed", G_CALLBACK(closed), this);
            for (auto& [number, listener] : listeners_) subscribe(listener);
            connections.tell(connection_.get());
        } else if (looks_ > 0) {
            lookLater();
        }
        const auto waiting = std::exchange(waiting_, {});
        for (const Connected& each : waiting) each(connection_.get());
    }

    static void closed(GDBusConnection*, int, GError*, void* data) { static_cast<State*>(data)->lose(); }

    void lose() {
        const auto self = shared_from_this();
        for (auto& [number, listener] : listeners_) listener.subscription = 0;
        drop();
        lookLater();
        connections.tell(nullptr);
    }

    /// Only after a bus that was once there.
    void lookLater() {
        if (look_ != 0 || looks_ == mostLooks) return;
        look_ = g_timeout_add(firstLookMilliseconds << static_cast<unsigned>(looks_++), lookNow, this);
    }

    static int lookNow(void* data) {
        auto* self = static_cast<State*>(data);
        self->look_ = 0;
        if (!self->connection_ && !self->cancellable_) self->connect();
        return G_SOURCE_REMOVE;
    }

    void drop() {
        if (!connection_) return;
        g_signal_handler_disconnect(connection_.get(), closed_);
        for (auto& [number, listener] : listeners_) {
            if (listener.subscription != 0)
                g_dbus_connection_signal_unsubscribe(connection_.get(), std::exchange(listener.subscription, 0));
        }
        connection_.reset();
    }

    void subscribe(Listener& listener) {
        const Source& source = listener.source;
        listener.subscription = g_dbus_connection_signal_subscribe(
            connection_.get(), orNull(source.sender), orNull(source.interface), orNull(source.member),
            orNull(source.path), orNull(source.firstArgument), G_DBUS_SIGNAL_FLAGS_NONE, signalled,
            new std::shared_ptr<Signalled>(listener.signalled),
            [](void* data) { delete static_cast<std::shared_ptr<Signalled>*>(data); });
    }

    static void signalled(GDBusConnection*, const char* sender, const char* path, const char*, const char*,
                          GVariant* arguments, void* data) {
        // Kept alive over a callback that ends the subscription.
        const auto called = *static_cast<std::shared_ptr<Signalled>*>(data);
        (*called)({.sender = sender == nullptr ? "" : sender, .path = path, .arguments = arguments});
    }

    static GDBusCallFlags flagsOf(const Call& call) {
        return call.mayStart ? G_DBUS_CALL_FLAGS_NONE : G_DBUS_CALL_FLAGS_NO_AUTO_START;
    }

    static void send(GDBusConnection* connection, const Call& call, const Answered& answered) {
        g_dbus_connection_call(connection, call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                               call.method.c_str(), call.arguments.get(), nullptr, flagsOf(call),
                               static_cast<int>(call.limit.count()), nullptr, replied, new Answered(answered));
    }

    static void replied(GObject* source, GAsyncResult* result, void* data) {
        const std::unique_ptr<Answered> answered(static_cast<Answered*>(data));
        Failure failure;
        // GLib's cast macro is an old-style cast.
        auto* connection = reinterpret_cast<GDBusConnection*>(source);
        const Variant value(g_dbus_connection_call_finish(connection, result, failure.place()));
        (*answered)({.value = value.get(),
                     .error = failure.text(),
                     .timedOut = failure.is(g_io_error_quark(), G_IO_ERROR_TIMED_OUT)});
    }

    std::string address_;
    std::chrono::milliseconds connectLimit_;
    GObjectOwned<GDBusConnection> connection_;
    GObjectOwned<GCancellable> cancellable_;
    std::vector<Connected> waiting_;
    std::map<std::uint64_t, Listener> listeners_;
    std::uint64_t last_ = 0;
    unsigned long closed_ = 0;
    unsigned timeout_ = 0;
    unsigned look_ = 0;
    /// How often we have looked for a lost bus.
    int looks_ = 0;
};

SessionBus::SessionBus(std::string address, std::chrono::milliseconds connectLimit)
    : state_(std::make_shared<State>(std::move(address), connectLimit)) {}

SessionBus::~SessionBus() { state_->end(); }

std::string SessionBus::usualAddress(const Environment& environment) {
    if (const auto address = environment("DBUS_SESSION_BUS_ADDRESS"); address && !address->empty()) return *address;
    const auto folder = environment("XDG_RUNTIME_DIR");
    if (!folder || folder->empty() || !isSocket(*folder + "/bus")) return {};
    return "unix:path=" + textOf(g_dbus_address_escape_value((*folder + "/bus").c_str()));
}

bool SessionBus::hasAddress() const { return state_->hasAddress(); }

void SessionBus::whenConnected(Connected connected) { state_->whenConnected(std::move(connected)); }

void SessionBus::call(Call call, Answered answered) { state_->call(std::move(call), std::move(answered)); }

Variant SessionBus::answerTo(const Call& call) const { return state_->answerTo(call); }

Subscription SessionBus::onConnection(Connected connected) { return state_->connections.add(std::move(connected)); }

Subscription SessionBus::onSignal(Source source, Signalled signalled) {
    const std::uint64_t number = state_->listen(std::move(source), std::move(signalled));
    return Subscription([state = std::weak_ptr(state_), number] {
        if (const auto kept = state.lock()) kept->forget(number);
    });
}

bool SessionBus::within(std::chrono::milliseconds limit, const std::function<bool()>& holds) {
    bool isLate = false;
    const auto late = [](void* data) -> int {
        *static_cast<bool*>(data) = true;
        return G_SOURCE_REMOVE;
    };
    const unsigned alarm = g_timeout_add(static_cast<unsigned>(limit.count()), late, &isLate);
    while (!isLate && !holds()) g_main_context_iteration(nullptr, TRUE);
    if (!isLate) g_source_remove(alarm);
    return holds();
}

}  // namespace tolvane::linuxhost
