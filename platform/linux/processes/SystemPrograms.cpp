#include "platform/linux/processes/SystemPrograms.h"

#include <unistd.h>

#include <algorithm>
#include <array>

#include "platform/SystemPaths.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Display servers, window managers, session buses, sound, input methods, desktop shells and their helpers.
/// Sorted ascending.
constexpr std::array<std::string_view, 72> desktopPrograms = {
    "Hyprland",
    "Xorg",
    "Xvfb",
    "Xwayland",
    "at-spi-bus-launcher",
    "at-spi2-registryd",
    "awesome",
    "bspwm",
    "cinnamon",
    "cinnamon-session",
    "cinnamon-session-binary",
    "dbus-broker",
    "dbus-broker-launch",
    "dbus-daemon",
    "dbus-launch",
    "dconf-service",
    "dunst",
    "dwm",
    "fcitx",
    "fcitx5",
    "fluxbox",
    "gcr-ssh-agent",
    "gdm-wayland-session",
    "gdm-x-session",
    "gnome-keyring-daemon",
    "gnome-session",
    "gnome-session-binary",
    "gnome-session-ctl",
    "gnome-shell",
    "gvfsd",
    "herbstluftwm",
    "i3",
    "i3bar",
    "ibus-daemon",
    "icewm",
    "kded5",
    "kded6",
    "kwin_wayland",
    "kwin_x11",
    "labwc",
    "lxpanel",
    "lxqt-panel",
    "lxqt-session",
    "lxsession",
    "marco",
    "mate-panel",
    "mate-session",
    "metacity",
    "muffin",
    "mutter",
    "niri",
    "openbox",
    "pipewire",
    "pipewire-pulse",
    "plasma_session",
    "plasmashell",
    "polybar",
    "pulseaudio",
    "river",
    "scim",
    "sway",
    "swaybg",
    "tint2",
    "uim-xim",
    "waybar",
    "wayfire",
    "weston",
    "wireplumber",
    "xfce4-panel",
    "xfce4-session",
    "xfconfd",
    "xfwm4",
};
static_assert(std::ranges::is_sorted(desktopPrograms));

/// Sorted ascending.
constexpr std::array<std::string_view, 58> launchers = {
    "Terminal",
    "alacritty",
    "blackbox",
    "byobu",
    "clion",
    "code",
    "code-insiders",
    "code-oss",
    "code-tunnel",
    "codium",
    "contour",
    "cool-retro-term",
    "cosmic-term",
    "cursor",
    "deepin-terminal",
    "emacs",
    "emacsclient",
    "foot",
    "ghostty",
    "gnome-builder",
    "gnome-terminal",
    "gnome-terminal-",
    "gnome-terminal-server",
    "goland",
    "guake",
    "helix",
    "hx",
    "idea",
    "kate",
    "kgx",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "nvim",
    "ptyxis",
    "ptyxis-agent",
    "pycharm",
    "qterminal",
    "rio",
    "rubymine",
    "rustrover",
    "rxvt",
    "screen",
    "st",
    "sublime_text",
    "terminator",
    "terminology",
    "tilda",
    "tilix",
    "tmux",
    "urxvt",
    "vim",
    "webstorm",
    "wezterm-gui",
    "xfce4-terminal",
    "xterm",
    "zed-editor",
};
static_assert(std::ranges::is_sorted(launchers));

constexpr std::array<std::string_view, 11> shells = {"ash", "bash", "csh",  "dash",  "fish", "ksh",
                                                     "nu",  "sh",   "tcsh", "xonsh", "zsh"};
static_assert(std::ranges::is_sorted(shells));

bool makesTheDesktop(const ProgramFacts& facts) {
    if (facts.unit.inUserManager || !isSystemPath(facts.executable)) return false;
    return std::ranges::binary_search(desktopPrograms, Scan::lastComponent(facts.executable));
}

}  // namespace

std::optional<bool> belongsToSystem(const ProgramFacts& facts) {
    if (facts.pid == 1 || facts.kernelThread || facts.ofAnotherUser || facts.container) return true;
    if (facts.unit.system || facts.unit.session || makesTheDesktop(facts)) return true;
    if (facts.unit.application || facts.unit.userScope || facts.startedByUser || facts.insideProject) return false;
    if (facts.unit.managedService && isSystemPath(facts.executable)) return true;
    return std::nullopt;
}

bool isLauncher(std::string_view programName) { return std::ranges::binary_search(launchers, programName); }

bool isShell(std::string_view programName) { return std::ranges::binary_search(shells, programName); }

bool isInsideProject(std::string_view folder, std::string_view home) {
    if (home.empty()) return false;
    std::string path(folder);
    while (path.size() > home.size() + 1 && path.starts_with(home) && path[home.size()] == '/') {
        const auto length = path.size();
        path += "/.git";
        if (::access(path.c_str(), F_OK) == 0) return true;
        path.resize(length);
        path.resize(path.rfind('/'));
    }
    return false;
}

}  // namespace tolvane::linuxhost
