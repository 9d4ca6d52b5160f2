#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/ServiceManager.h"

namespace tolvane::linuxhost {

/// Whether the service manager of the machine or of the user keeps the processes of this control group running: a
/// `.service` that is not an application's. The service that runs a user's manager does not count.
///
///     /user.slice/user-1000.slice/user@1000.service/app.slice/syncthing.service     is kept
///     /system.slice/postgresql@15-main.service                                       is kept
///     /user.slice/user-1000.slice/user@1000.service/app.slice/app-org.kde.dolphin@1a2b.service   is an application
///     /user.slice/user-1000.slice/session-2.scope                                    is grouped only, never restarted
bool isKeptService(std::string_view unitPath);

/// The processes in kept services, from /proc/PID/cgroup. Processes that start programs outside of such services are
/// not listed: the desktop's shell, the session bus, login servers. They are ancestors of a whole session, so all of
/// the user's work would count as descending from a kept service.
class LinuxServiceManager : public ServiceManager {
public:
    explicit LinuxServiceManager(std::string proc = "/proc") : proc_(std::move(proc)) {}

    std::set<Pid> managedPIDs() override;

private:
    std::string proc_;
};

}  // namespace tolvane::linuxhost
