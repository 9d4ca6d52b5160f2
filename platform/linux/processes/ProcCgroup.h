#pragma once

#include <string_view>

namespace tolvane::linuxhost {

/// A process's control groups, from /proc/PID/cgroup:
///
///     9:name=systemd:/user.slice/user-1000.slice/user@1000.service/app.slice/app-gnome-firefox-4977.scope
///     4:memory:/user.slice
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-gnome-firefox-4977.scope
///
/// Most machines have only the last line. The views point into the text; empty where the line is missing.
struct ProcCgroup {
    std::string_view unified;
    std::string_view systemd;

    /// The path by which the service manager knows the process.
    std::string_view unit() const { return systemd.empty() ? unified : systemd; }

    bool operator==(const ProcCgroup&) const = default;
};

ProcCgroup parseProcCgroup(std::string_view text);

/// The folder on which the unified hierarchy is mounted, from /proc/self/mounts; empty when there is none:
///
///     cgroup2 /sys/fs/cgroup/unified cgroup2 rw,nosuid,nodev,noexec,relatime 0 0
std::string_view cgroupMount(std::string_view mounts);

/// What a unit's path says about the programs in it.
struct UnitFacts {
    /// A service of the machine, or the machine's or the user's service manager itself.
    bool system = false;
    /// Part of the desktop's own session: compositor, sound, shell.
    bool session = false;
    /// Below the user's service manager, whose units say what each program is.
    bool inUserManager = false;
    /// A service that the user's service manager keeps, except those of applications.
    bool managedService = false;
    /// An application, by the unit names that desktops and Snap use.
    bool application = false;
    /// A scope below the user's service manager: something that the user started.
    bool userScope = false;
    /// The user's service manager itself.
    bool userManager = false;

    bool operator==(const UnitFacts&) const = default;
};

UnitFacts unitFacts(std::string_view path);

}  // namespace tolvane::linuxhost
