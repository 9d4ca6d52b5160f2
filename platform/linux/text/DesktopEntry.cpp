#include "platform/linux/text/DesktopEntry.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;

struct Released {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(char* text) const { g_free(text); }
    void operator()(char** list) const { g_strfreev(list); }
};
using KeyFile = std::unique_ptr<GKeyFile, Released>;

std::string taken(char* text) {
    const std::unique_ptr<char, Released> owner(text);
    return text == nullptr ? std::string() : std::string(text);
}

KeyFile load(const std::string& path, bool everyLanguage) {
    KeyFile file(g_key_file_new());
    const auto flags = everyLanguage ? G_KEY_FILE_KEEP_TRANSLATIONS : G_KEY_FILE_NONE;
    if (g_key_file_load_from_file(file.get(), path.c_str(), flags, nullptr) == FALSE) return nullptr;
    return file;
}

std::string text(GKeyFile* file, const char* key) { return taken(g_key_file_get_string(file, group, key, nullptr)); }

bool flag(GKeyFile* file, const char* key) { return g_key_file_get_boolean(file, group, key, nullptr) != FALSE; }

std::string localText(GKeyFile* file, const char* key, const std::string& locale) {
    return taken(g_key_file_get_locale_string(file, group, key, locale.empty() ? nullptr : locale.c_str(), nullptr));
}

bool lists(GKeyFile* file, const char* key, std::string_view wanted) {
    const std::unique_ptr<char*, Released> words(g_key_file_get_string_list(file, group, key, nullptr, nullptr));
    if (!words) return false;
    for (char** word = words.get(); *word != nullptr; ++word) {
        if (*word == wanted) return true;
    }
    return false;
}

/// An icon theme looks names up without a file's extension.
std::string themeName(std::string icon) {
    if (icon.starts_with('/')) return icon;
    for (const std::string_view end : {".png", ".svg", ".xpm"}) {
        if (icon.ends_with(end)) icon.resize(icon.size() - end.size());
    }
    return icon;
}

bool isPlaceholder(std::string_view word) { return word.size() == 2 && word.front() == '%' && word.back() != '%'; }

bool isAssignment(std::string_view word) {
    const auto equals = word.find('=');
    return equals != std::string_view::npos && equals > 0 && word.find('/') > equals;
}

constexpr std::array starters = {std::string_view("env"),       std::string_view("nice"),
                                 std::string_view("nohup"),     std::string_view("setsid"),
                                 std::string_view("prime-run"), std::string_view("gamemoderun")};

constexpr std::array shells = {std::string_view("sh"),     std::string_view("bash"), std::string_view("dash"),
                               std::string_view("zsh"),    std::string_view("fish"), std::string_view("ksh"),
                               std::string_view("tcsh"),   std::string_view("csh"),  std::string_view("nu"),
                               std::string_view("busybox")};

constexpr std::array carriers = {
    std::string_view("env"),         std::string_view("node"),         std::string_view("nodejs"),
    std::string_view("deno"),        std::string_view("bun"),          std::string_view("java"),
    std::string_view("javaw"),       std::string_view("dotnet"),       std::string_view("gjs"),
    std::string_view("gjs-console"), std::string_view("flatpak"),      std::string_view("bwrap"),
    std::string_view("snap"),        std::string_view("snap-exec"),    std::string_view("xdg-open"),
    std::string_view("gtk-launch"),  std::string_view("gapplication"), std::string_view("gio"),
    std::string_view("dbus-send"),   std::string_view("dbus-launch"),  std::string_view("dbus-run-session"),
    std::string_view("pkexec"),      std::string_view("sudo"),         std::string_view("su"),
    std::string_view("systemd-run"), std::string_view("true"),         std::string_view("false")};

/// Names that a version may follow: "python3.11", "electron25", "wine64", "lua5.4".
constexpr std::array versionedCarriers = {
    std::string_view("python"), std::string_view("perl"),     std::string_view("ruby"), std::string_view("php"),
    std::string_view("lua"),    std::string_view("electron"), std::string_view("wine"), std::string_view("mono"),
    std::string_view("pypy"),   std::string_view("guile")};

bool isVersion(std::string_view text) { return text.find_first_not_of("0123456789.-") == std::string_view::npos; }

}  // namespace

std::optional<DesktopEntry> readDesktopEntry(const std::string& path, std::string identifier,
                                             const std::string& locale) {
    const KeyFile file = load(path, !locale.empty());
    if (!file || g_key_file_has_group(file.get(), group) == FALSE) return std::nullopt;
    DesktopEntry entry;
    entry.path = path;
    entry.identifier = std::move(identifier);
    entry.hidden = flag(file.get(), "Hidden");
    if (entry.hidden) return entry;
    entry.name = localText(file.get(), "Name", locale);
    if (text(file.get(), "Type") != "Application" || entry.name.empty()) return std::nullopt;
    entry.icon = themeName(localText(file.get(), "Icon", locale));
    entry.command = wordsOfExec(text(file.get(), "Exec"));
    entry.notDisplayed = flag(file.get(), "NoDisplay");
    entry.needsTerminal = flag(file.get(), "Terminal");
    entry.isTerminalEmulator = lists(file.get(), "Categories", "TerminalEmulator");
    entry.windowClass = text(file.get(), "StartupWMClass");
    return entry;
}

std::vector<std::string> wordsOfExec(const std::string& exec) {
    char** list = nullptr;
    if (exec.empty() || g_shell_parse_argv(exec.c_str(), nullptr, &list, nullptr) == FALSE) return {};
    const std::unique_ptr<char*, Released> owner(list);
    std::vector<std::string> words;
    for (char** word = list; *word != nullptr; ++word) {
        if (!isPlaceholder(*word)) words.emplace_back(*word);
    }
    return words;
}

std::string_view programOfCommand(const std::vector<std::string>& command) {
    for (const std::string& word : command) {
        const bool isStarter = std::ranges::find(starters, Scan::lastComponent(word)) != starters.end();
        if (!isStarter && !isAssignment(word) && !word.starts_with('-')) return word;
    }
    return {};
}

bool isShellName(std::string_view programName) { return std::ranges::find(shells, programName) != shells.end(); }

bool isNoIdentity(std::string_view programName) {
    if (isShellName(programName) || std::ranges::find(carriers, programName) != carriers.end()) return true;
    return std::ranges::any_of(versionedCarriers, [&](std::string_view carrier) {
        return programName.starts_with(carrier) && isVersion(programName.substr(carrier.size()));
    });
}

}  // namespace tolvane::linuxhost
