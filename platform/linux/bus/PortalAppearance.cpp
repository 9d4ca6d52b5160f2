#include "platform/linux/bus/PortalAppearance.h"

#include <string>
#include <string_view>
#include <utility>

#include "base/Observers.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* object = "/org/freedesktop/portal/desktop";
constexpr const char* settings = "org.freedesktop.portal.Settings";
constexpr const char* space = "org.freedesktop.appearance";
constexpr const char* keys[] = {"color-scheme", "contrast", "reduced-motion"};

/// Long enough for a running portal, too short for anyone to notice one that hangs.
constexpr std::chrono::milliseconds patience{120};
/// For a portal that the bus has to start first.
constexpr std::chrono::seconds startLimit{25};

constexpr unsigned prefersDark = 1, prefersLight = 2;

SessionBus::Call question(const char* key, std::chrono::milliseconds limit) {
    return {.destination = service,
            .path = object,
            .interface = settings,
            .method = "Read",
            .arguments = taken(g_variant_new("(ss)", space, key)),
            .limit = limit};
}

/// The number in a value; 0 for any other. Old portals wrap the value in one variant more.
unsigned numberIn(GVariant* value) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT) != FALSE) {
        const Variant inner(g_variant_get_variant(value));
        return numberIn(inner.get());
    }
    return g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE ? g_variant_get_uint32(value) : 0;
}

}  // namespace

/// Pending answers hold it weakly, since they may arrive after it ends.
class PortalAppearance::State : public std::enable_shared_from_this<State> {
public:
    explicit State(std::shared_ptr<SessionBus> bus) : bus_(std::move(bus)) {}

    Observers<const AppearanceWishes&> observers;

    const AppearanceWishes& current() {
        if (!std::exchange(begun_, true) && bus_ && bus_->hasAddress()) begin();
        return wishes_;
    }

private:
    void begin() {
        changes_ = bus_->onSignal({.sender = service,
                                   .interface = settings,
                                   .member = "SettingChanged",
                                   .path = object,
                                   .firstArgument = space},
                                  [this](const BusSignal& signal) { takeChange(signal.arguments); });
        const bool runs = portalRuns();
        for (const char* key : keys) runs ? askNow(key) : askLater(key);
    }

    bool portalRuns() const {
        const auto answer = bus_->answerTo({.destination = "org.freedesktop.DBus",
                                            .path = "/org/freedesktop/DBus",
                                            .interface = "org.freedesktop.DBus",
                                            .method = "NameHasOwner",
                                            .arguments = taken(g_variant_new("(s)", service)),
                                            .limit = patience});
        if (!answer || g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(b)")) == FALSE) return false;
        const Variant truth(g_variant_get_child_value(answer.get(), 0));
        return g_variant_get_boolean(truth.get()) != FALSE;
    }

    void askNow(const char* key) { takeAnswer(key, bus_->answerTo(question(key, patience)).get()); }

    void askLater(const char* key) {
        bus_->call(question(key, startLimit), [weak = weak_from_this(), key](const BusAnswer& answer) {
            if (const auto self = weak.lock()) self->takeAnswer(key, answer.value);
        });
    }

    void takeAnswer(std::string_view key, GVariant* answer) {
        if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(v)")) == FALSE) return;
        const Variant value(g_variant_get_child_value(answer, 0));
        take(key, numberIn(value.get()));
    }

    void takeChange(GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssv)")) == FALSE) return;
        const Variant key(g_variant_get_child_value(arguments, 1));
        const Variant value(g_variant_get_child_value(arguments, 2));
        take(g_variant_get_string(key.get(), nullptr), numberIn(value.get()));
    }

    /// A preference that is withdrawn leaves the colours as they are.
    void take(std::string_view key, unsigned value) {
        const auto before = wishes_;
        if (key == "color-scheme" && (value == prefersDark || value == prefersLight)) {
            wishes_.dark = value == prefersDark;
        }
        if (key == "contrast") wishes_.highContrast = value == 1;
        if (key == "reduced-motion") wishes_.reducedMotion = value == 1;
        if (wishes_ != before) observers.tell(wishes_);
    }

    std::shared_ptr<SessionBus> bus_;
    AppearanceWishes wishes_;
    bool begun_ = false;
    Subscription changes_;
};

PortalAppearance::PortalAppearance(std::shared_ptr<SessionBus> bus) : state_(std::make_shared<State>(std::move(bus))) {}

PortalAppearance::~PortalAppearance() = default;

AppearanceWishes PortalAppearance::current() { return state_->current(); }

Subscription PortalAppearance::onChange(std::function<void(const AppearanceWishes& wishes)> changed) {
    return state_->observers.add(std::move(changed));
}

}  // namespace tolvane::linuxhost
