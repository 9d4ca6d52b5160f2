#include "platform/linux/windows/AccessibilityFrontmost.h"

#include <string>
#include <vector>

#include "base/Observers.h"
#include "platform/linux/bus/BusWords.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* launcher = "org.a11y.Bus";
constexpr const char* launcherPath = "/org/a11y/bus";
constexpr const char* status = "org.a11y.Status";
constexpr const char* properties = "org.freedesktop.DBus.Properties";
constexpr const char* registry = "org.a11y.atspi.Registry";
constexpr const char* registryPath = "/org/a11y/atspi/registry";
constexpr const char* windowEvents = "org.a11y.atspi.Event.Window";

SessionBus::Call callOf(const char* destination, const char* path, const char* interface, const char* method,
                        GVariant* arguments) {
    return {.destination = destination,
            .path = path,
            .interface = interface,
            .method = method,
            .arguments = taken(arguments),
            .limit = std::chrono::seconds(5),
            .mayStart = false};
}

/// Whether the user switched accessibility on, for a screen reader or another aid.
bool isEnabled(GVariant* answer) {
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(a{sv})")) == FALSE) return false;
    const Variant known(g_variant_get_child_value(answer, 0));
    int general = FALSE;
    int reader = FALSE;
    g_variant_lookup(known.get(), "IsEnabled", "b", &general);
    g_variant_lookup(known.get(), "ScreenReaderEnabled", "b", &reader);
    return general != FALSE || reader != FALSE;
}

/// A window of a program, by the names the accessibility bus uses for both.
struct Place {
    std::string sender;
    std::string path;

    bool operator==(const Place&) const = default;
};

Place placeOf(const BusSignal& signal) { return {.sender = signal.sender, .path = signal.path}; }

}  // namespace

/// Pending answers hold it weakly, since they may arrive after it ends.
class AccessibilityFrontmost::Link : public std::enable_shared_from_this<Link> {
public:
    explicit Link(std::shared_ptr<SessionBus> bus) : bus_(std::move(bus)) {}

    Observers<> observers;
    /// The active window; nullopt while it is not known.
    std::optional<FrontWindow> window;

    void begin() {
        subscriptions_.push_back(
            bus_->onSignal(BusWords::ownerChanges(launcher), [this](const BusSignal&) { renew(); }));
        subscriptions_.push_back(bus_->onSignal({.sender = launcher,
                                                 .interface = properties,
                                                 .member = "PropertiesChanged",
                                                 .path = launcherPath,
                                                 .firstArgument = status},
                                                [this](const BusSignal&) { askStatus(); }));
        subscriptions_.push_back(bus_->onConnection([this](GDBusConnection*) { renew(); }));
        askStatus();
    }

private:
    using Step = void (Link::*)(const BusAnswer& answer);

    void ask(SessionBus& bus, SessionBus::Call call, Step step) {
        bus.call(std::move(call), [weak = weak_from_this(), step](const BusAnswer& answer) {
            if (const auto self = weak.lock()) (self.get()->*step)(answer);
        });
    }

    void renew() {
        leave();
        askStatus();
    }

    void askStatus() {
        ask(*bus_, callOf(launcher, launcherPath, properties, "GetAll", g_variant_new("(s)", status)),
            &Link::hearStatus);
    }

    void hearStatus(const BusAnswer& answer) {
        if (!isEnabled(answer.value)) return leave();
        if (!events_) ask(*bus_, callOf(launcher, launcherPath, launcher, "GetAddress", nullptr), &Link::enter);
    }

    void enter(const BusAnswer& answer) {
        const std::string address = BusWords::textIn(answer.value);
        if (address.empty() || events_) return;
        events_ = std::make_shared<SessionBus>(address);
        on("Activate", &Link::activated);
        on("Deactivate", &Link::deactivated);
        // The registry may be started again.
        turns_.push_back(events_->onSignal(BusWords::ownerChanges(registry), [this](const BusSignal& news) {
            if (!BusWords::newOwner(news.arguments).empty()) listenForTurns();
        }));
        turns_.push_back(events_->onConnection([this](GDBusConnection* connection) {
            if (connection == nullptr) return forget();
            listenForTurns();
        }));
        // The connection callback subscribes to the events.
        events_->whenConnected([](GDBusConnection*) {});
    }

    void on(const char* member, void (Link::*heard)(const Place&)) {
        turns_.push_back(
            events_->onSignal({.sender = {}, .interface = windowEvents, .member = member, .path = {}},
                              [this, heard](const BusSignal& signal) { (this->*heard)(placeOf(signal)); }));
    }

    void listenForTurns() {
        listenFor("window:activate");
        listenFor("window:deactivate");
    }

    /// Programs do not send events that nobody asked for.
    void listenFor(const char* event) {
        const Variant none = taken(g_variant_new_strv(nullptr, 0));
        auto call =
            callOf(registry, registryPath, registry, "RegisterEvent", g_variant_new("(s@ass)", event, none.get(), ""));
        // The first to speak or listen on that bus has its registry started. Without the registry the session's first
        // program would not be heard.
        call.mayStart = true;
        events_->call(std::move(call), [](const BusAnswer&) {});
    }

    void leave() {
        turns_.clear();
        events_.reset();
        forget();
    }

    void forget() {
        senderLife_.reset();
        turn_ = {};
        window.reset();
        observers.tell();
    }

    void activated(const Place& place) {
        if (place == turn_) return;
        turn_ = place;
        // A program that crashes does not report that its window was deactivated. Listening starts before the question,
        // since the bus handles both in order: a program that ends in between is noticed either way.
        senderLife_ = events_->onSignal(BusWords::ownerChanges(turn_.sender), [this](const BusSignal&) { forget(); });
        events_->call(BusWords::processOf(place.sender), [weak = weak_from_this(), place](const BusAnswer& answer) {
            const auto self = weak.lock();
            if (self && self->turn_ == place) self->show(answer.value);
        });
    }

    void show(GVariant* answer) {
        if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)")) == FALSE) return forget();
        std::uint32_t pid = 0;
        g_variant_get(answer, "(u)", &pid);
        window = FrontWindow{.pid = static_cast<Pid>(pid)};
        observers.tell();
    }

    /// The next window may have been activated before.
    void deactivated(const Place& place) {
        if (place == turn_) forget();
    }

    std::shared_ptr<SessionBus> bus_;
    std::vector<Subscription> subscriptions_;
    /// The accessibility bus, while we listen to it.
    std::shared_ptr<SessionBus> events_;
    std::vector<Subscription> turns_;
    Place turn_;
    Subscription senderLife_;
};

AccessibilityFrontmost::AccessibilityFrontmost(std::shared_ptr<SessionBus> bus)
    : link_(std::make_shared<Link>(std::move(bus))) {
    link_->begin();
}

AccessibilityFrontmost::~AccessibilityFrontmost() = default;

bool AccessibilityFrontmost::canTell() const { return link_->window.has_value(); }

std::optional<FrontWindow> AccessibilityFrontmost::inFront() const { return link_->window; }

Subscription AccessibilityFrontmost::onChange(std::function<void()> changed) {
    return link_->observers.add(std::move(changed));
}

}  // namespace tolvane::linuxhost
