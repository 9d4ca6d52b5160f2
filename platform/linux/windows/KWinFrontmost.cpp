#include "platform/linux/windows/KWinFrontmost.h"

#include <unistd.h>

#include <QTimer>
#include <charconv>
#include <string_view>
#include <utility>

#include "platform/linux/Observers.h"
#include "platform/linux/bus/BusWords.h"
#include "platform/linux/windows/KWinScript.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* kwin = "org.kde.KWin";
constexpr const char* scripting = "/Scripting";
constexpr const char* scriptingInterface = "org.kde.kwin.Scripting";
constexpr const char* description =
    "<node><interface name='dev.tolvane.Frontmost'><method name='Activated'><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/></method></interface></node>";

/// Names that cannot be one leave it to the others.
FrontWindow windowOf(std::string_view pid, const char* entry, const char* windowClass) {
    FrontWindow window;
    Pid number = 0;
    const auto [end, error] = std::from_chars(pid.data(), pid.data() + pid.size(), number);
    if (error == std::errc() && end == pid.data() + pid.size() && number > 0) window.pid = number;
    for (const std::string name : {entry, windowClass}) {
        if (!name.empty()) window.names.push_back(name);
    }
    return window;
}

}  // namespace

/// Answers may come after its end: they hold it weakly.
class KWinFrontmost::Link : public std::enable_shared_from_this<Link> {
public:
    Link(std::shared_ptr<SessionBus> bus, std::string folder, Patience patience)
        : bus_(std::move(bus)), folder_(std::move(folder)), patience_(patience) {}
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    ~Link() {
        unload();
        withdraw();
        removeScript();
    }

    Observers<> observers;
    bool isAway = false;
    bool canTell = false;
    std::optional<FrontWindow> window;

    void begin() {
        owners_ = bus_->onSignal(BusWords::ownerChanges(kwin),
                                 [this](const BusSignal& signal) { take(BusWords::newOwner(signal.arguments)); });
        connections_ = bus_->onConnection([this](GDBusConnection* connection) { enter(connection); });
        bus_->whenConnected([weak = weak_from_this()](GDBusConnection* connection) {
            if (const auto self = weak.lock(); self && connection != self->connection_.get()) self->enter(connection);
            if (const auto self = weak.lock(); self && connection == nullptr) self->take({});
        });
    }

private:
    using Step = void (Link::*)(const BusAnswer& answer);

    void enter(GDBusConnection* connection) {
        withdraw();
        if (connection == nullptr) return take({});
        connection_.reset(static_cast<GDBusConnection*>(g_object_ref(connection)));
        const GLibOwned<GDBusNodeInfo> node(g_dbus_node_info_new_for_xml(description, nullptr));
        static constexpr GDBusInterfaceVTable table = {
            .method_call = called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        registration_ = g_dbus_connection_register_object(connection, KWinScript::path, node->interfaces[0], &table,
                                                          this, nullptr, nullptr);
        ask(BusWords::ownerOf(kwin), &Link::hearOwner);
    }

    void withdraw() {
        if (registration_ != 0) g_dbus_connection_unregister_object(connection_.get(), std::exchange(registration_, 0));
        connection_.reset();
    }

    /// What comes of a question about an earlier KWin is of no interest.
    void ask(SessionBus::Call call, Step step) {
        bus_->call(std::move(call), [weak = weak_from_this(), round = round_, step](const BusAnswer& answer) {
            if (const auto self = weak.lock(); self && self->round_ == round) (self.get()->*step)(answer);
        });
    }

    void after(std::chrono::milliseconds pause, void (Link::*step)()) {
        QTimer::singleShot(pause, [weak = weak_from_this(), round = round_, step] {
            if (const auto self = weak.lock(); self && self->round_ == round) (self.get()->*step)();
        });
    }

    void hearOwner(const BusAnswer& answer) { take(BusWords::textIn(answer.value)); }

    /// Another KWin, or none.
    void take(const std::string& owner) {
        ++round_;
        owner_ = owner;
        attempts_ = 0;
        isAway = owner.empty();
        canTell = false;
        window.reset();
        removeScript();
        if (!owner.empty()) load();
        observers.tell();
    }

    SessionBus::Call callOf(const char* method, GVariant* arguments) const {
        return {.destination = owner_,
                .path = scripting,
                .interface = scriptingInterface,
                .method = method,
                .arguments = taken(arguments),
                .limit = std::chrono::seconds(5),
                .mayStart = false};
    }

    void load() {
        removeScript();
        script_ = KWinScript::write(folder_, KWinScript::text(g_dbus_connection_get_unique_name(connection_.get())));
        if (script_.empty()) return giveUp();
        // An earlier run may have ended without a word.
        ask(callOf("unloadScript", g_variant_new("(s)", KWinScript::name)), &Link::loadFresh);
    }

    void loadFresh(const BusAnswer& /*unloaded*/) {
        ask(callOf("loadScript", g_variant_new("(ss)", script_.c_str(), KWinScript::name)), &Link::start);
    }

    void start(const BusAnswer& loaded) {
        std::int32_t number = -1;
        if (loaded.value != nullptr && g_variant_is_of_type(loaded.value, G_VARIANT_TYPE("(i)")) != FALSE)
            g_variant_get(loaded.value, "(i)", &number);
        if (number < 0) return tryAgain();
        ask(callOf("start", nullptr), &Link::wait);
    }

    void wait(const BusAnswer& started) {
        if (started.value == nullptr) return tryAgain();
        if (!canTell) after(patience_.limit, &Link::endWait);
    }

    void endWait() {
        if (!canTell) giveUp();
    }

    void tryAgain() {
        if (++attempts_ >= patience_.attempts) return giveUp();
        after(patience_.firstPause * (1 << (attempts_ - 1)), &Link::load);
    }

    void giveUp() {
        removeScript();
        isAway = true;
        observers.tell();
    }

    void removeScript() {
        if (!script_.empty()) ::unlink(std::exchange(script_, {}).c_str());
    }

    /// The loop may be over by now: what is to be said is said at once, and nobody waits for the answer.
    void unload() {
        if (owner_.empty() || !connection_) return;
        g_dbus_connection_call(connection_.get(), owner_.c_str(), scripting, scriptingInterface, "unloadScript",
                               g_variant_new("(s)", KWinScript::name), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                               nullptr, nullptr, nullptr);
        g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
    }

    static void called(GDBusConnection*, const char* sender, const char*, const char*, const char*, GVariant* arguments,
                       GDBusMethodInvocation* invocation, void* data) {
        const auto self = static_cast<Link*>(data)->shared_from_this();
        g_dbus_method_invocation_return_value(invocation, nullptr);
        // Any program could claim to be in front.
        if (sender == nullptr || self->owner_ != sender) return;
        const char* pid = nullptr;
        const char* entry = nullptr;
        const char* windowClass = nullptr;
        g_variant_get(arguments, "(&s&s&s)", &pid, &entry, &windowClass);
        self->hear(windowOf(pid, entry, windowClass));
    }

    void hear(FrontWindow told) {
        removeScript();
        isAway = false;
        canTell = true;
        window.reset();
        if (told != FrontWindow{}) window = std::move(told);
        observers.tell();
    }

    std::shared_ptr<SessionBus> bus_;
    std::string folder_;
    Patience patience_;
    GObjectOwned<GDBusConnection> connection_;
    unsigned registration_ = 0;
    /// KWin's unique name; empty while there is none.
    std::string owner_;
    /// Counts the KWins.
    int round_ = 0;
    int attempts_ = 0;
    /// The script's file, until it has been read.
    std::string script_;
    Subscription owners_;
    Subscription connections_;
};

KWinFrontmost::KWinFrontmost(std::shared_ptr<SessionBus> bus, std::string scriptFolder, Patience patience)
    : link_(std::make_shared<Link>(std::move(bus), std::move(scriptFolder), patience)) {
    link_->begin();
}

KWinFrontmost::~KWinFrontmost() = default;

bool KWinFrontmost::canTell() const { return link_->canTell; }

std::optional<FrontWindow> KWinFrontmost::inFront() const { return link_->window; }

Subscription KWinFrontmost::onChange(std::function<void()> changed) { return link_->observers.add(std::move(changed)); }

bool KWinFrontmost::isAway() const { return link_->isAway; }

}  // namespace tolvane::linuxhost
