#include "platform/linux/bus/StatusHosts.h"

#include <utility>
#include <vector>

namespace tolvane::linuxhost {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* object = "/StatusNotifierWatcher";

/// The value of a boolean property; false for any other answer.
bool truthIn(GVariant* answer) {
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(v)")) == FALSE) return false;
    GVariant* value = nullptr;
    g_variant_get(answer, "(v)", &value);
    const Variant owner(value);
    return g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE && g_variant_get_boolean(value) != FALSE;
}

}  // namespace

/// Pending answers hold it weakly, since they may arrive after it ends.
class StatusHosts::State : public std::enable_shared_from_this<State> {
public:
    State(std::shared_ptr<SessionBus> bus, std::function<void()> changed)
        : bus_(std::move(bus)), changed_(std::move(changed)) {}

    bool present() const { return present_; }
    int losses() const { return losses_; }

    void start() {
        if (!bus_ || !bus_->hasAddress()) return;
        listen({.sender = "org.freedesktop.DBus",
                .interface = "org.freedesktop.DBus",
                .member = "NameOwnerChanged",
                .path = "/org/freedesktop/DBus",
                .firstArgument = watcher});
        for (const char* member : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
            listen({.sender = watcher, .interface = watcher, .member = member, .path = object});
        }
        news_.push_back(bus_->onConnection([this](GDBusConnection* connection) {
            if (connection == nullptr) return lose();
            if (std::exchange(isLost_, false)) ask();
        }));
        ask();
    }

private:
    void listen(SessionBus::Source source) {
        news_.push_back(bus_->onSignal(std::move(source), [this](const BusSignal&) { ask(); }));
    }

    /// A watcher may run without a host that shows the items. Without a watcher the call fails.
    void ask() {
        bus_->call({.destination = watcher,
                    .path = object,
                    .interface = "org.freedesktop.DBus.Properties",
                    .method = "Get",
                    .arguments = taken(g_variant_new("(ss)", watcher, "IsStatusNotifierHostRegistered")),
                    .mayStart = false},
                   [weak = weak_from_this()](const BusAnswer& answer) {
                       if (const auto self = weak.lock()) self->set(truthIn(answer.value));
                   });
    }

    void lose() {
        isLost_ = true;
        if (present_) ++losses_;
        set(false);
    }

    void set(bool present) {
        if (std::exchange(present_, present) != present) changed_();
    }

    std::shared_ptr<SessionBus> bus_;
    std::function<void()> changed_;
    bool present_ = false;
    bool isLost_ = false;
    int losses_ = 0;
    std::vector<Subscription> news_;
};

StatusHosts::StatusHosts(std::shared_ptr<SessionBus> bus, std::function<void()> changed)
    : state_(std::make_shared<State>(std::move(bus), std::move(changed))) {
    state_->start();
}

bool StatusHosts::present() const { return state_->present(); }

int StatusHosts::losses() const { return state_->losses(); }

}  // namespace tolvane::linuxhost
