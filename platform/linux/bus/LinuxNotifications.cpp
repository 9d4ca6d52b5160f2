#include "platform/linux/bus/LinuxNotifications.h"

#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "base/Observers.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* name = "org.freedesktop.Notifications";
constexpr const char* object = "/org/freedesktop/Notifications";
/// A program that posts without end while no daemon answers must not fill memory.
constexpr std::size_t mostWaiting = 32;
constexpr std::size_t mostShown = 256;

/// What the daemon can do. Until it has answered, only a title is safe to send.
using Capabilities = std::set<std::string, std::less<>>;

Capabilities capabilitiesIn(GVariant* answer) {
    Capabilities found;
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(as)")) == FALSE) return found;
    GVariantIter* list = nullptr;
    g_variant_get(answer, "(as)", &list);
    const char* each = nullptr;
    while (g_variant_iter_next(list, "&s", &each) != FALSE) found.emplace(each);
    g_variant_iter_free(list);
    return found;
}

GVariant* actions(bool isOffered) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    if (isOffered) {
        g_variant_builder_add(&list, "s", "default");
        g_variant_builder_add(&list, "s", "Open");
    }
    return g_variant_builder_end(&list);
}

GVariant* hints() {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&list, "{sv}", "desktop-entry", g_variant_new_string("dev.tolvane.Tolvane"));
    g_variant_builder_add(&list, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
    return g_variant_builder_end(&list);
}

/// Titles are plain text everywhere. Bytes that are not valid text would end the connection.
Variant request(const Notification& notification, const Capabilities& can) {
    const bool hasBody = can.contains("body") || can.contains("body-markup");
    std::string title = notification.title;
    std::string body = hasBody ? notification.body : std::string();
    if (!hasBody && !notification.body.empty()) title += ": " + notification.body;
    const std::string validTitle = textOf(g_utf8_make_valid(title.c_str(), -1));
    std::string validBody = textOf(g_utf8_make_valid(body.c_str(), -1));
    if (can.contains("body-markup")) validBody = escapedMarkup(validBody);
    return taken(g_variant_new("(susss@as@a{sv}i)", "Tolvane", 0U, "dev.tolvane.Tolvane", validTitle.c_str(),
                               validBody.c_str(), actions(can.contains("actions")), hints(), -1));
}

std::optional<std::uint32_t> identifierIn(GVariant* answer) {
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)")) == FALSE) return std::nullopt;
    std::uint32_t identifier = 0;
    g_variant_get(answer, "(u)", &identifier);
    return identifier;
}

}  // namespace

std::string escapedMarkup(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            default:
                escaped += letter;
        }
    }
    return escaped;
}

/// The daemon, as far as it is known. Pending answers hold it weakly, since they may arrive after it ends.
class LinuxNotifications::Daemon : public std::enable_shared_from_this<Daemon> {
public:
    explicit Daemon(std::shared_ptr<SessionBus> bus) : bus_(std::move(bus)) {}

    Observers<std::optional<std::string>> clicks;

    void post(const Notification& notification) {
        if (!bus_->hasAddress() || waiting_.size() >= mostWaiting) return;
        listen();
        if (capabilities_) return deliver(notification);
        waiting_.push_back(notification);
        if (waiting_.size() == 1) askCapabilities();
    }

private:
    void listen() {
        if (!subscriptions_.empty()) return;
        on("ActionInvoked", &Daemon::invoked);
        on("NotificationClosed", &Daemon::closed);
        on("ActivationToken", &Daemon::takeToken);
        // Another daemon has other capabilities and starts counting again.
        subscriptions_.push_back(bus_->onSignal({.sender = "org.freedesktop.DBus",
                                                 .interface = "org.freedesktop.DBus",
                                                 .member = "NameOwnerChanged",
                                                 .path = "/org/freedesktop/DBus",
                                                 .firstArgument = name},
                                                [this](const BusSignal&) { forget(); }));
        // The owner-change signal would have come over the bus that died.
        subscriptions_.push_back(bus_->onConnection([this](GDBusConnection* connection) {
            if (connection == nullptr) forget();
        }));
    }

    void on(const char* member, void (Daemon::*heard)(GVariant*)) {
        subscriptions_.push_back(
            bus_->onSignal({.sender = name, .interface = name, .member = member, .path = object},
                           [this, heard](const BusSignal& signal) { (this->*heard)(signal.arguments); }));
    }

    void forget() {
        capabilities_.reset();
        sections_.clear();
    }

    SessionBus::Call callOf(const char* method, Variant arguments) const {
        return {.destination = name,
                .path = object,
                .interface = name,
                .method = method,
                .arguments = std::move(arguments)};
    }

    void askCapabilities() {
        bus_->call(callOf("GetCapabilities", nullptr), [weak = weak_from_this()](const BusAnswer& answer) {
            const auto self = weak.lock();
            if (!self) return;
            const auto waiting = std::exchange(self->waiting_, {});
            // Starting the daemon changes the name's owner, and that signal arrived first.
            if (answer.value == nullptr) return;
            self->capabilities_ = capabilitiesIn(answer.value);
            for (const Notification& each : waiting) self->deliver(each);
        });
    }

    void deliver(const Notification& notification) {
        bus_->call(callOf("Notify", request(notification, *capabilities_)),
                   [weak = weak_from_this(), section = notification.section](const BusAnswer& answer) {
                       const auto identifier = identifierIn(answer.value);
                       if (const auto self = weak.lock(); self && identifier) self->noteShown(*identifier, section);
                   });
    }

    /// Daemons need not report which notifications they dropped.
    void noteShown(std::uint32_t identifier, const std::optional<std::string>& section) {
        sections_[identifier] = section;
        if (sections_.size() > mostShown) sections_.erase(sections_.begin());
    }

    void invoked(GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(us)")) == FALSE) return;
        std::uint32_t identifier = 0;
        g_variant_get(arguments, "(u&s)", &identifier, nullptr);
        const auto found = sections_.find(identifier);
        if (found == sections_.end()) return;
        const auto section = found->second;
        sections_.erase(found);
        clicks.tell(section);
    }

    void closed(GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(uu)")) == FALSE) return;
        std::uint32_t identifier = 0;
        g_variant_get(arguments, "(uu)", &identifier, nullptr);
        sections_.erase(identifier);
    }

    /// Lets the window that the click opens come to the front; the toolkit reads the token from the environment.
    void takeToken(GVariant* arguments) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(us)")) == FALSE) return;
        std::uint32_t identifier = 0;
        const char* token = nullptr;
        g_variant_get(arguments, "(u&s)", &identifier, &token);
        if (sections_.contains(identifier)) g_setenv("XDG_ACTIVATION_TOKEN", token, TRUE);
    }

    std::shared_ptr<SessionBus> bus_;
    std::optional<Capabilities> capabilities_;
    std::vector<Notification> waiting_;
    /// The section a click opens, by the daemon's notification id.
    std::map<std::uint32_t, std::optional<std::string>> sections_;
    std::vector<Subscription> subscriptions_;
};

LinuxNotifications::LinuxNotifications(std::shared_ptr<SessionBus> bus)
    : daemon_(std::make_shared<Daemon>(std::move(bus))) {}

LinuxNotifications::~LinuxNotifications() = default;

void LinuxNotifications::post(const Notification& notification) { daemon_->post(notification); }

Subscription LinuxNotifications::onClick(Clicked clicked) { return daemon_->clicks.add(std::move(clicked)); }

}  // namespace tolvane::linuxhost
