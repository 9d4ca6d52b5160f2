#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::linuxhost {

/// Decodes the `\x2d` escapes of a unit's name.
std::string unescapedUnitName(std::string_view name);

/// Encodes a text as part of a unit's name: "org.example.my\x2deditor" for "org.example.my-editor".
std::string escapedUnitName(std::string_view text);

/// The applications that a process's control group may be named after, as identifiers of desktop entries, the likeliest
/// first. Parses the text of /proc/PID/cgroup, whose lines end in paths such as
///
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-gnome-firefox-4977.scope
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-org.kde.dolphin@1a2b.service
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-org.gnome.Terminal.slice/vte-spawn-9d.scope
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-flatpak-org.example.Editor-1234.scope
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/snap.code.code-6d5b….scope
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/dbus-:1.2-org.gnome.Calculator@0.service
std::vector<std::string> appIdentifiersOfCgroup(std::string_view cgroup);

/// The application's name in Flatpak's information file in the sandbox, "[Application]" followed by
/// "name=org.example.Editor".
std::optional<std::string> flatpakIdentifier(std::string_view flatpakInfo);

/// The package of a program that runs from /snap/NAME/REVISION/….
std::optional<std::string> snapOfExecutable(std::string_view executable);

}  // namespace tolvane::linuxhost
