#pragma once

#include <string_view>

namespace tolvane::linuxhost {

/// Where a process stands in the control groups, from /proc/PID/cgroup:
///
///     9:name=systemd:/user.slice/user-1000.slice/user@1000.service/app.slice/app-gnome-firefox-4977.scope
///     4:memory:/user.slice
///     0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-gnome-firefox-4977.scope
///
/// Most machines have the last line only. Views point into the text; empty where there is no such line.
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

/// What a unit's path tells about the programs in it.
struct UnitFacts {
    /// A service of the machine, or the machine's or the user's service manager itself.
    bool system = false;
    /// Part of the desktop's own session: compositor, sound, shell.
    bool session = false;
    /// Below the user's service manager, so that the units there tell what is what.
    bool inUserManager = false;
    /// A service that the user's service manager keeps, but for applications.
    bool managedService = false;
    /// An application, by the naming of desktops and of Snap.
    bool application = false;
    /// A scope below the user's service manager: something that the user started.
    bool userScope = false;
    /// The user's service manager itself.
    bool userManager = false;

    bool operator==(const UnitFacts&) const = default;
};

UnitFacts unitFacts(std::string_view path);

}  // namespace tolvane::linuxhost
