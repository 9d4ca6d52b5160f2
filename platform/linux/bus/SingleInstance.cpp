#include "platform/linux/bus/SingleInstance.h"

#include <QTimer>
#include <algorithm>
#include <string_view>

#include "base/Observers.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/text/ExecLine.h"

namespace tolvane::linuxhost {

namespace {

using Request = SingleInstance::Request;
using Outcome = SingleInstance::Outcome;

constexpr const char* interface = "org.freedesktop.Application";
constexpr const char* description =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
    "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"
    "<method name='ActivateAction'><arg type='s' direction='in'/><arg type='av' direction='in'/>"
    "<arg type='a{sv}' direction='in'/></method>"
    "</interface></node>";
/// Flags of RequestName: fail instead of queueing for the name, or queue.
constexpr std::uint32_t doNotQueue = 4;
constexpr std::uint32_t queue = 0;
constexpr std::uint32_t primaryOwner = 1;
constexpr std::uint32_t alreadyOwner = 4;

std::string objectPathOf(std::string name) {
    std::ranges::replace(name, '.', '/');
    return "/" + name;
}

Variant platformData(const std::string& token) {
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE("a{sv}"));
    if (!token.empty()) {
        g_variant_builder_add(&data, "{sv}", "activation-token", g_variant_new_string(token.c_str()));
        g_variant_builder_add(&data, "{sv}", "desktop-startup-id", g_variant_new_string(token.c_str()));
    }
    return taken(g_variant_builder_end(&data));
}

/// The D-Bus method that carries a request, with its arguments.
std::pair<const char*, Variant> messageOf(const Request& request, const std::string& token) {
    const Variant data = platformData(token);
    if (request.action) {
        GVariant* none = g_variant_new_array(G_VARIANT_TYPE_VARIANT, nullptr, 0);
        return {"ActivateAction", taken(g_variant_new("(s@av@a{sv})", request.action->c_str(), none, data.get()))};
    }
    if (request.files.empty()) return {"Activate", taken(g_variant_new("(@a{sv})", data.get()))};
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    for (const std::string& file : request.files) g_variant_builder_add(&list, "s", fileAddress(file).c_str());
    return {"Open", taken(g_variant_new("(as@a{sv})", &list, data.get()))};
}

std::vector<std::string> filesIn(GVariant* addresses) {
    std::vector<std::string> files;
    for (std::size_t index = 0; index < g_variant_n_children(addresses); ++index) {
        const Variant address(g_variant_get_child_value(addresses, index));
        std::string file = textOf(g_filename_from_uri(g_variant_get_string(address.get(), nullptr), nullptr, nullptr));
        if (!file.empty()) files.push_back(std::move(file));
    }
    return files;
}

/// The toolkit takes the token from there when the window comes forward.
void takeToken(GVariant* data) {
    const char* token = nullptr;
    if (g_variant_lookup(data, "activation-token", "&s", &token) != FALSE ||
        g_variant_lookup(data, "desktop-startup-id", "&s", &token) != FALSE)
        g_setenv("XDG_ACTIVATION_TOKEN", token, TRUE);
}

Request requestIn(std::string_view method, GVariant* arguments) {
    const Variant data(g_variant_get_child_value(arguments, g_variant_n_children(arguments) - 1));
    takeToken(data.get());
    if (method == "Activate") return {};
    const Variant first(g_variant_get_child_value(arguments, 0));
    if (method == "Open") return {.files = filesIn(first.get())};
    return {.action = g_variant_get_string(first.get(), nullptr)};
}

}  // namespace

/// The object that answers on the bus, and the requests it received.
class SingleInstance::Object : public std::enable_shared_from_this<Object> {
public:
    Object(std::shared_ptr<SessionBus> bus, std::string name)
        : bus_(std::move(bus)), name_(std::move(name)), path_(objectPathOf(name_)) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() { withdraw(); }

    std::optional<Outcome> outcome;

    void settle(const Request& request, const std::string& token) {
        bus_->whenConnected([weak = weak_from_this(), request, token](GDBusConnection* connection) {
            const auto self = weak.lock();
            if (!self) return;
            if (connection == nullptr) return self->end(Outcome::alone);
            // Anyone who sees the name may call at once, so the object is registered first.
            self->registerObject(connection);
            self->takeName(request, token);
        });
    }

    void end(Outcome settled) {
        if (outcome) return;
        outcome = settled;
        if (settled == Outcome::first) keepName();
    }

    Subscription onRequest(std::function<void(Request)> requested) {
        auto subscription = requests_.add(std::move(requested));
        QTimer::singleShot(0, [weak = weak_from_this()] {
            const auto self = weak.lock();
            if (!self) return;
            for (const Request& early : std::exchange(self->early_, {})) self->requests_.tell(early);
        });
        return subscription;
    }

private:
    SessionBus::Call callOf(const std::string& destination, const std::string& path, const char* called,
                            const char* method, Variant arguments) const {
        return {.destination = destination,
                .path = path,
                .interface = called,
                .method = method,
                .arguments = std::move(arguments),
                .limit = std::chrono::seconds(5),
                .mayStart = false};
    }

    /// The bus may die and be replaced by one that knows nothing of us.
    void keepName() {
        renewals_ = bus_->onConnection([this](GDBusConnection* connection) {
            withdraw();
            if (connection == nullptr) return;
            registerObject(connection);
            // A start in between may hold the name until it finds our folder locked.
            bus_->call(requestOfName(queue), [](const BusAnswer&) {});
        });
    }

    void withdraw() {
        if (registration_ != 0) g_dbus_connection_unregister_object(connection_.get(), std::exchange(registration_, 0));
        connection_.reset();
    }

    SessionBus::Call requestOfName(std::uint32_t flags) const {
        return callOf("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                      taken(g_variant_new("(su)", name_.c_str(), flags)));
    }

    void registerObject(GDBusConnection* connection) {
        const GLibOwned<GDBusNodeInfo> node(g_dbus_node_info_new_for_xml(description, nullptr));
        static constexpr GDBusInterfaceVTable table = {
            .method_call = called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        connection_.reset(static_cast<GDBusConnection*>(g_object_ref(connection)));
        registration_ = g_dbus_connection_register_object(connection, path_.c_str(), node->interfaces[0], &table, this,
                                                          nullptr, nullptr);
    }

    void takeName(const Request& request, const std::string& token) {
        bus_->call(requestOfName(doNotQueue), [weak = weak_from_this(), request, token](const BusAnswer& answer) {
            const auto self = weak.lock();
            if (!self) return;
            if (answer.value == nullptr) return self->end(Outcome::alone);
            std::uint32_t result = 0;
            g_variant_get(answer.value, "(u)", &result);
            if (result == primaryOwner || result == alreadyOwner) return self->end(Outcome::first);
            self->handOver(request, token);
        });
    }

    /// The other program may end at this very moment; then the name is free.
    void handOver(const Request& request, const std::string& token) {
        auto [method, arguments] = messageOf(request, token);
        auto call = callOf(name_, path_, interface, method, std::move(arguments));
        bus_->call(std::move(call), [weak = weak_from_this(), request, token](const BusAnswer& answer) {
            const auto self = weak.lock();
            if (!self) return;
            if (answer.value != nullptr) return self->end(Outcome::handedOver);
            if (answer.timedOut || ++self->attempts_ > 2) return self->end(Outcome::silent);
            self->takeName(request, token);
        });
    }

    static void called(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, void* data) {
        auto* self = static_cast<Object*>(data);
        const Request request = requestIn(method, arguments);
        g_dbus_method_invocation_return_value(invocation, nullptr);
        if (self->requests_.empty()) return self->early_.push_back(request);
        self->requests_.tell(request);
    }

    std::shared_ptr<SessionBus> bus_;
    std::string name_;
    std::string path_;
    GObjectOwned<GDBusConnection> connection_;
    unsigned registration_ = 0;
    int attempts_ = 0;
    std::vector<Request> early_;
    Observers<Request> requests_;
    Subscription renewals_;
};

SingleInstance::SingleInstance(std::shared_ptr<SessionBus> bus, std::string name)
    : object_(std::make_shared<Object>(std::move(bus), std::move(name))) {}

SingleInstance::~SingleInstance() = default;

Outcome SingleInstance::settle(const Request& request, const std::string& token, std::chrono::milliseconds limit) {
    object_->settle(request, token);
    if (!SessionBus::within(limit, [this] { return object_->outcome.has_value(); })) object_->end(Outcome::silent);
    return *object_->outcome;
}

Subscription SingleInstance::onRequest(std::function<void(Request)> requested) {
    return object_->onRequest(std::move(requested));
}

}  // namespace tolvane::linuxhost
