#include "platform/linux/applications/DesktopLauncher.h"

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/linux/applications/AppUnit.h"
#include "platform/linux/text/ExecLine.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

/// The parts of a desktop entry that starting it needs.
struct Launcher::Entry {
    std::string path;
    /// The file's name without ".desktop"; the bus name of an application that is started over the bus.
    std::string identifier;
    std::string name;
    std::string icon;
    std::string exec;
    std::string folder;
    bool isOnBus = false;
    bool needsTerminal = false;

    /// Null when the entry is gone or its program is not installed.
    static std::shared_ptr<const Entry> read(const std::string& path);
};

namespace {

/// These would bring the new program to the front, or notify another program's supervisor about it.
constexpr std::array notInherited = {
    std::string_view("DESKTOP_STARTUP_ID="), std::string_view("XDG_ACTIVATION_TOKEN="),
    std::string_view("NOTIFY_SOCKET="),      std::string_view("INVOCATION_ID="),
    std::string_view("JOURNAL_STREAM="),     std::string_view("GIO_LAUNCHED_DESKTOP_FILE="),
};

bool isInherited(std::string_view entry) {
    return std::ranges::none_of(notInherited, [&](std::string_view name) { return entry.starts_with(name); });
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (const std::string& text : texts) list.push_back(const_cast<char*>(text.c_str()));
    list.push_back(nullptr);
    return list;
}

/// "/org/example/Editor" for "org.example.Editor": applications on the bus name their object after themselves.
std::string objectPath(const std::string& identifier) {
    std::string path = "/" + identifier;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

GVariant* addresses(const std::vector<std::string>& files) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    for (const std::string& file : files) g_variant_builder_add(&list, "s", fileAddress(file).c_str());
    return g_variant_builder_end(&list);
}

Variant activation(const std::vector<std::string>& files) {
    GVariant* nothing = g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0);
    if (files.empty()) return taken(g_variant_new("(@a{sv})", nothing));
    return taken(g_variant_new("(@as@a{sv})", addresses(files), nothing));
}

/// The arguments with which a service manager creates a scope around one process.
Variant scopeOf(const std::string& unit, const std::string& description, int pid) {
    const auto number = static_cast<std::uint32_t>(pid);
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a(sv)"));
    g_variant_builder_add(&properties, "(sv)", "PIDs",
                          g_variant_new_fixed_array(G_VARIANT_TYPE_UINT32, &number, 1, sizeof number));
    g_variant_builder_add(&properties, "(sv)", "Description", g_variant_new_string(description.c_str()));
    g_variant_builder_add(&properties, "(sv)", "Slice", g_variant_new_string("app.slice"));
    g_variant_builder_add(&properties, "(sv)", "CollectMode", g_variant_new_string("inactive-or-failed"));
    return taken(g_variant_new("(ss@a(sv)@a(sa(sv)))", unit.c_str(), "fail", g_variant_builder_end(&properties),
                               g_variant_new_array(G_VARIANT_TYPE("(sa(sv))"), nullptr, 0)));
}

}  // namespace

std::shared_ptr<const Launcher::Entry> Launcher::Entry::read(const std::string& path) {
    const GObjectOwned<GDesktopAppInfo> info(g_desktop_app_info_new_from_filename(path.c_str()));
    if (!info) return nullptr;
    auto entry = std::make_shared<Entry>();
    const auto text = [&](const char* key) { return textOf(g_desktop_app_info_get_string(info.get(), key)); };
    const auto file = Scan::lastComponent(path);
    entry->path = path;
    entry->identifier = std::string(file.substr(0, file.size() - std::string_view(".desktop").size()));
    entry->name = textOf(g_desktop_app_info_get_locale_string(info.get(), "Name"));
    entry->icon = textOf(g_desktop_app_info_get_locale_string(info.get(), "Icon"));
    entry->exec = text("Exec");
    entry->folder = text("Path");
    entry->isOnBus = g_desktop_app_info_get_boolean(info.get(), "DBusActivatable") != FALSE &&
                     g_dbus_is_name(entry->identifier.c_str()) != FALSE;
    entry->needsTerminal = g_desktop_app_info_get_boolean(info.get(), "Terminal") != FALSE;
    return entry;
}

Launcher::Launcher(std::shared_ptr<SessionBus> bus, std::vector<std::string> environment, std::string home,
                   std::chrono::milliseconds limit)
    : bus_(std::move(bus)), environment_(std::move(environment)), home_(std::move(home)), limit_(limit) {
    std::erase_if(environment_, [](const std::string& entry) { return !isInherited(entry); });
}

std::vector<std::string> Launcher::presentEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) entries.emplace_back(*entry);
    return entries;
}

void Launcher::launch(const std::string& entryPath, const std::vector<std::string>& files, Launched launched) {
    const auto entry = entryPath.ends_with(".desktop") ? Entry::read(entryPath) : nullptr;
    if (!entry) {
        const bool isThere = ::access(entryPath.c_str(), R_OK) == 0;
        return launched(isThere ? "Its program is not installed." : "It is no longer installed.");
    }
    if (entry->isOnBus && bus_->hasAddress()) return activate(entry, files, std::move(launched));
    launched(execute(*entry, files));
}

/// If the bus cannot start it, the command line may. One that merely does not answer may still be starting.
void Launcher::activate(std::shared_ptr<const Entry> entry, const std::vector<std::string>& files, Launched launched) {
    SessionBus::Call call{.destination = entry->identifier,
                          .path = objectPath(entry->identifier),
                          .interface = "org.freedesktop.Application",
                          .method = files.empty() ? "Activate" : "Open",
                          .arguments = activation(files),
                          .limit = limit_};
    bus_->call(std::move(call), [weak = weak_from_this(), entry, files, launched](const BusAnswer& answer) {
        const auto self = weak.lock();
        if (answer.value != nullptr) return launched(std::nullopt);
        if (answer.timedOut) return launched("It does not answer.");
        if (entry->exec.empty() || !self) return launched(answer.error);
        launched(self->execute(*entry, files));
    });
}

std::optional<std::string> Launcher::execute(const Entry& entry, const std::vector<std::string>& files) const {
    auto command =
        commandOfExec(entry.exec, {.name = entry.name, .icon = entry.icon, .entryPath = entry.path, .files = files});
    if (command.empty()) return "Its desktop entry has no command that can be read.";
    if (entry.needsTerminal) command = withTerminal(std::move(command));
    constexpr auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH_FROM_ENVP | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                    G_SPAWN_STDERR_TO_DEV_NULL);
    const auto leaveSession = [](void*) { ::setsid(); };
    const std::string& folder = entry.folder.empty() ? home_ : entry.folder;
    Failure failure;
    GPid pid = 0;
    if (g_spawn_async(folder.c_str(), pointers(command).data(), pointers(environment_).data(), flags, leaveSession,
                      nullptr, &pid, failure.place()) == FALSE)
        return failure.text();
    moveToScope(entry.identifier, pid);
    return std::nullopt;
}

std::vector<std::string> Launcher::withTerminal(std::vector<std::string> command) const {
    const bool isNew = !textOf(g_find_program_in_path("xdg-terminal-exec")).empty();
    std::vector<std::string> whole = {isNew ? "xdg-terminal-exec" : "x-terminal-emulator"};
    if (!isNew) whole.emplace_back("-e");
    std::ranges::move(command, std::back_inserter(whole));
    return whole;
}

/// In our own scope it would count as a part of this program and end with it.
void Launcher::moveToScope(const std::string& identifier, int pid) const {
    const std::string unit = "app-" + escapedUnitName(identifier) + "-" + std::to_string(pid) + ".scope";
    SessionBus::Call call{.destination = "org.freedesktop.systemd1",
                          .path = "/org/freedesktop/systemd1",
                          .interface = "org.freedesktop.systemd1.Manager",
                          .method = "StartTransientUnit",
                          .arguments = scopeOf(unit, identifier, pid),
                          .mayStart = false};
    bus_->call(std::move(call), [](const BusAnswer&) {});
}

}  // namespace tolvane::linuxhost
