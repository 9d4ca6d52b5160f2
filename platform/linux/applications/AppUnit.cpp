#include "platform/linux/applications/AppUnit.h"

#include <algorithm>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::string_view scopeEnd = ".scope";
constexpr std::string_view serviceEnd = ".service";
constexpr std::string_view sliceEnd = ".slice";

bool removeEnd(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end)) return false;
    text.remove_suffix(end.size());
    return true;
}

bool removeStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
}

int hexDigit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    return -1;
}

void add(std::vector<std::string>& identifiers, std::string_view name) {
    std::string identifier = unescapedUnitName(name);
    if (!identifier.empty() && std::ranges::find(identifiers, identifier) == identifiers.end())
        identifiers.push_back(std::move(identifier));
}

/// "[launcher-]ID". A launcher that does not escape leaves dashes in the identifier, so this adds the whole name and
/// then the part after each dash.
void addNames(std::vector<std::string>& identifiers, std::string_view name) {
    add(identifiers, name);
    for (auto dash = name.find('-'); dash != std::string_view::npos; dash = name.find('-'))
        add(identifiers, name = name.substr(dash + 1));
}

/// `name` is the unit's name without "app-" and its suffix.
void addAppScope(std::vector<std::string>& identifiers, std::string_view name) {
    // The random part may be missing if a launcher chose the name of its scope itself.
    const auto dash = name.rfind('-');
    if (dash != std::string_view::npos) addNames(identifiers, name.substr(0, dash));
    if (dash == std::string_view::npos) add(identifiers, name);
}

void addAppUnit(std::vector<std::string>& identifiers, std::string_view name) {
    if (removeEnd(name, scopeEnd)) addAppScope(identifiers, name);
    if (removeEnd(name, serviceEnd)) addNames(identifiers, name.substr(0, name.find('@')));
    if (removeEnd(name, sliceEnd)) addNames(identifiers, name);
}

/// ":1.2-org.gnome.Calculator@0.service".
void addBusUnit(std::vector<std::string>& identifiers, std::string_view name) {
    if (!removeEnd(name, serviceEnd)) return;
    name = name.substr(0, name.find('@'));
    const auto dash = name.find('-');
    if (dash != std::string_view::npos) add(identifiers, name.substr(dash + 1));
}

bool isUUID(std::string_view text) {
    return text.size() == 36 && std::ranges::all_of(text, [](char c) { return c == '-' || hexDigit(c) >= 0; });
}

/// "firefox.firefox-UUID.scope", formerly "firefox.firefox.UUID.scope"; a snap's entry is "firefox_firefox".
void addSnapUnit(std::vector<std::string>& identifiers, std::string_view name) {
    constexpr std::size_t uuidPart = 37;
    if (!removeEnd(name, scopeEnd)) return;
    if (name.size() > uuidPart && isUUID(name.substr(name.size() - uuidPart + 1))) name.remove_suffix(uuidPart);
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) return;
    const std::string package(name.substr(0, dot));
    const std::string_view app = name.substr(dot + 1, name.find('.', dot + 1) - dot - 1);
    add(identifiers, package + "_" + std::string(app));
    add(identifiers, package + "_" + package);
}

void addUnit(std::vector<std::string>& identifiers, std::string_view unit) {
    if (removeStart(unit, "app-")) addAppUnit(identifiers, unit);
    if (removeStart(unit, "snap.")) addSnapUnit(identifiers, unit);
    if (removeStart(unit, "dbus-")) addBusUnit(identifiers, unit);
}

/// Adds the innermost unit first.
void addPath(std::vector<std::string>& identifiers, std::string_view path) {
    while (!path.empty()) {
        const auto slash = path.rfind('/');
        addUnit(identifiers, slash == std::string_view::npos ? path : path.substr(slash + 1));
        path = slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
    }
}

/// The path in the hierarchy of the service manager: the unified one, or its own beside older ones.
std::string_view managedPath(std::string_view line) {
    constexpr std::string_view own = ":name=systemd:";
    if (removeStart(line, "0::")) return line;
    const auto at = line.find(own);
    return at == std::string_view::npos ? std::string_view() : line.substr(at + own.size());
}

}  // namespace

std::string escapedUnitName(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789:_.";
    std::string escaped;
    for (const char letter : text) {
        const bool isPlain = plain.find(letter) != std::string_view::npos && (letter != '.' || !escaped.empty());
        if (isPlain) {
            escaped += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        escaped += "\\x";
        escaped += digits[byte >> 4U];
        escaped += digits[byte & 15U];
    }
    return escaped;
}

std::string unescapedUnitName(std::string_view name) {
    std::string plain;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool escaped = name.substr(at).starts_with("\\x") && at + 3 < name.size() &&
                             hexDigit(name[at + 2]) >= 0 && hexDigit(name[at + 3]) >= 0;
        plain += escaped ? static_cast<char>(hexDigit(name[at + 2]) * 16 + hexDigit(name[at + 3])) : name[at];
        if (escaped) at += 3;
    }
    return plain;
}

std::vector<std::string> appIdentifiersOfCgroup(std::string_view cgroup) {
    std::vector<std::string> identifiers;
    while (!cgroup.empty()) addPath(identifiers, managedPath(Scan::take(cgroup, '\n')));
    return identifiers;
}

std::optional<std::string> flatpakIdentifier(std::string_view flatpakInfo) {
    bool inApplication = false;
    while (!flatpakInfo.empty()) {
        auto line = Scan::take(flatpakInfo, '\n');
        if (line.starts_with('[')) inApplication = line == "[Application]";
        if (inApplication && removeStart(line, "name=") && !line.empty()) return std::string(line);
    }
    return std::nullopt;
}

std::optional<std::string> snapOfExecutable(std::string_view executable) {
    if (!removeStart(executable, "/snap/")) return std::nullopt;
    const auto slash = executable.find('/');
    if (slash == std::string_view::npos || slash == 0) return std::nullopt;
    return std::string(executable.substr(0, slash));
}

}  // namespace tolvane::linuxhost
