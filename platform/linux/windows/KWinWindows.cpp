#include "platform/linux/windows/KWinWindows.h"

#include <QTimer>
#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Observers.h"
#include "platform/linux/bus/BusWords.h"
#include "platform/linux/windows/KWinScript.h"
#include "platform/linux/windows/KWinUpload.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* kwin = "org.kde.KWin";
constexpr std::chrono::milliseconds longestClose = std::chrono::seconds(5);
constexpr const char* description =
    "<node><interface name='dev.tolvane.Windows'><method name='Activated'><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/></method>"
    "<method name='Listed'><arg type='s' direction='in'/></method><method name='Closed'/></interface></node>";

/// A number that is not a process id leaves identification to the names.
FrontWindow windowOf(std::string_view pid, std::string_view entry, std::string_view windowClass) {
    FrontWindow window;
    Pid number = 0;
    const auto [end, error] = std::from_chars(pid.data(), pid.data() + pid.size(), number);
    if (error == std::errc() && end == pid.data() + pid.size() && number > 0) window.pid = number;
    for (const std::string_view name : {entry, windowClass}) {
        if (!name.empty()) window.names.emplace_back(name);
    }
    return window;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

/// A window as the script reported it, "4711\torg.kde.kate\tkate", parsed.
struct Listed {
    std::string line;
    FrontWindow window;
};

std::vector<Listed> listedIn(std::string_view report) {
    std::vector<Listed> all;
    for (const std::string_view line : split(report, '\n')) {
        const auto parts = split(line, '\t');
        if (parts.size() == 3)
            all.push_back({.line = std::string(line), .window = windowOf(parts[0], parts[1], parts[2])});
    }
    return all;
}

}  // namespace

/// Pending answers hold it weakly, since they may arrive after it ends.
class KWinWindows::Link : public std::enable_shared_from_this<Link> {
public:
    Link(std::shared_ptr<SessionBus> bus, std::string folder, Patience patience)
        : bus_(std::move(bus)), folder_(std::move(folder)), patience_(patience) {}
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    ~Link() {
        if (!owner_.empty() && connection_) unload();
        withdraw();
    }

    Observers<> observers;
    bool isAway = false;
    bool canTell = false;
    std::optional<FrontWindow> active;
    std::vector<Listed> all;

    void begin() {
        owners_ = bus_->onSignal(BusWords::ownerChanges(kwin),
                                 [this](const BusSignal& signal) { take(BusWords::newOwner(signal.arguments)); });
        connections_ = bus_->onConnection([this](GDBusConnection* connection) { enter(connection); });
        bus_->whenConnected([weak = weak_from_this()](GDBusConnection* connection) {
            const auto self = weak.lock();
            if (self && (connection == nullptr || connection != self->connection_.get())) self->enter(connection);
        });
    }

    void close(std::vector<std::string> lines) {
        std::ranges::move(lines, std::back_inserter(toClose_));
        if (!closing_ && !toClose_.empty()) closeNow();
    }

private:
    void enter(GDBusConnection* connection) {
        withdraw();
        if (connection == nullptr) return take({});
        connection_.reset(static_cast<GDBusConnection*>(g_object_ref(connection)));
        const GLibOwned<GDBusNodeInfo> node(g_dbus_node_info_new_for_xml(description, nullptr));
        static constexpr GDBusInterfaceVTable table = {
            .method_call = called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        registration_ = g_dbus_connection_register_object(connection, KWinScript::path, node->interfaces[0], &table,
                                                          this, nullptr, nullptr);
        bus_->call(BusWords::ownerOf(kwin), [weak = weak_from_this(), round = round_](const BusAnswer& answer) {
            if (const auto self = weak.lock(); self && self->round_ == round)
                self->take(BusWords::textIn(answer.value));
        });
    }

    void withdraw() {
        if (registration_ != 0) g_dbus_connection_unregister_object(connection_.get(), std::exchange(registration_, 0));
        connection_.reset();
    }

    /// What was scheduled for an earlier KWin is not done to this one.
    void after(std::chrono::milliseconds pause, void (Link::*step)()) {
        QTimer::singleShot(pause, [weak = weak_from_this(), round = round_, step] {
            if (const auto self = weak.lock(); self && self->round_ == round) (self.get()->*step)();
        });
    }

    /// Another KWin, or none.
    void take(const std::string& owner) {
        ++round_;
        owner_ = owner;
        attempts_ = 0;
        isAway = owner.empty();
        canTell = false;
        active.reset();
        all.clear();
        watching_.reset();
        closing_.reset();
        toClose_.clear();
        if (!owner.empty()) load();
        observers.tell();
    }

    std::string listener() const { return g_dbus_connection_get_unique_name(connection_.get()); }

    void load() {
        watching_ = std::make_shared<KWinUpload>(bus_, owner_, KWinScript::watching);
        watching_->begin(folder_, KWinScript::watch(listener()), [this](bool isTaken) {
            if (!isTaken) return tryAgain();
            if (!canTell) after(patience_.limit, &Link::endWait);
        });
    }

    void endWait() {
        if (!canTell) giveUp();
    }

    void tryAgain() {
        if (++attempts_ >= patience_.attempts) return giveUp();
        after(patience_.firstPause * (1 << (attempts_ - 1)), &Link::load);
    }

    void giveUp() {
        watching_->removeFile();
        isAway = true;
        observers.tell();
    }

    /// The loop may be over by now: send at once and do not wait for the answer.
    void unload() const {
        const auto call = KWinUpload(bus_, owner_, KWinScript::watching).unloading();
        g_dbus_connection_call(connection_.get(), call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                               call.method.c_str(), call.arguments.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                               nullptr, nullptr, nullptr);
        g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
    }

    void closeNow() {
        closing_ = std::make_shared<KWinUpload>(bus_, owner_, KWinScript::closing);
        closing_->begin(folder_, KWinScript::close(listener(), std::exchange(toClose_, {})),
                        [this](bool isTaken) { endCloseAfter(isTaken ? longestClose : std::chrono::milliseconds(0)); });
    }

    /// For a script that never reports back.
    void endCloseAfter(std::chrono::milliseconds pause) {
        QTimer::singleShot(pause, [weak = weak_from_this(), meant = std::weak_ptr(closing_)] {
            const auto self = weak.lock();
            if (self && self->closing_ && self->closing_ == meant.lock()) self->endClose();
        });
    }

    void endClose() {
        if (!closing_) return;
        bus_->call(closing_->unloading(), [](const BusAnswer&) {});
        closing_.reset();
        if (!toClose_.empty()) closeNow();
    }

    static void called(GDBusConnection*, const char* sender, const char*, const char*, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* invocation, void* data) {
        const auto self = static_cast<Link*>(data)->shared_from_this();
        // The arguments are freed with the invocation.
        const Variant kept(g_variant_ref(arguments));
        g_dbus_method_invocation_return_value(invocation, nullptr);
        // Any program could claim to be in front, so only KWin's own messages count.
        if (sender != nullptr && self->owner_ == sender) self->hear(method, arguments);
    }

    void hear(std::string_view method, GVariant* arguments) {
        if (method == "Closed") return endClose();
        if (method == "Listed") {
            const char* report = nullptr;
            g_variant_get(arguments, "(&s)", &report);
            all = listedIn(report);
            return;
        }
        const char* pid = nullptr;
        const char* entry = nullptr;
        const char* windowClass = nullptr;
        g_variant_get(arguments, "(&s&s&s)", &pid, &entry, &windowClass);
        show(windowOf(pid, entry, windowClass));
    }

    void show(FrontWindow told) {
        if (watching_) watching_->removeFile();
        isAway = false;
        canTell = true;
        active.reset();
        if (told != FrontWindow{}) active = std::move(told);
        observers.tell();
    }

    std::shared_ptr<SessionBus> bus_;
    std::string folder_;
    Patience patience_;
    GObjectOwned<GDBusConnection> connection_;
    unsigned registration_ = 0;
    /// KWin's unique name; empty while there is none.
    std::string owner_;
    /// Counts the KWins seen.
    int round_ = 0;
    int attempts_ = 0;
    std::shared_ptr<KWinUpload> watching_;
    std::shared_ptr<KWinUpload> closing_;
    /// Lines of the windows to close next.
    std::vector<std::string> toClose_;
    Subscription owners_;
    Subscription connections_;
};

KWinWindows::KWinWindows(std::shared_ptr<SessionBus> bus, std::string scriptFolder, Patience patience)
    : link_(std::make_shared<Link>(std::move(bus), std::move(scriptFolder), patience)) {
    link_->begin();
}

KWinWindows::~KWinWindows() = default;

bool KWinWindows::canTell() const { return link_->canTell; }

std::optional<FrontWindow> KWinWindows::inFront() const { return link_->active; }

Subscription KWinWindows::onChange(std::function<void()> changed) { return link_->observers.add(std::move(changed)); }

bool KWinWindows::isAway() const { return link_->isAway; }

bool KWinWindows::any(const IsMeant& isMeant) const {
    return std::ranges::any_of(link_->all, isMeant, &Listed::window);
}

std::size_t KWinWindows::askToClose(const IsMeant& isMeant) {
    std::vector<std::string> lines;
    for (const Listed& each : link_->all) {
        if (isMeant(each.window)) lines.push_back(each.line);
    }
    const std::size_t count = lines.size();
    link_->close(std::move(lines));
    return count;
}

}  // namespace tolvane::linuxhost
