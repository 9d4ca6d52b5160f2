#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/ServiceManager.h"

namespace tolvane::linuxhost {

/// Whether the service manager of the machine or of the user keeps what runs in this control group: a `.service` that
/// is no application's. The service that a user's manager itself is does not count.
///
///     /user.slice/user-1000.slice/user@1000.service/app.slice/syncthing.service     is kept
///     /system.slice/postgresql@15-main.service                                       is kept
///     /user.slice/user-1000.slice/user@1000.service/app.slice/app-org.kde.dolphin@1a2b.service   is an application
///     /user.slice/user-1000.slice/session-2.scope                                    is grouped only, never restarted
bool isKeptService(std::string_view unitPath);

/// The processes in kept services, from /proc/PID/cgroup. What starts programs that end up outside of any such service
/// is not listed: the desktop's shell, the session bus, the servers of logins. Theirs are the processes of a whole
/// session, and whoever looks for ancestors among the listed ones would find them above all of the user's work.
class LinuxServiceManager : public ServiceManager {
public:
    explicit LinuxServiceManager(std::string proc = "/proc") : proc_(std::move(proc)) {}

    std::set<Pid> managedPIDs() override;

private:
    std::string proc_;
};

}  // namespace tolvane::linuxhost
