#include "platform/linux/makeLinuxHost.h"

#include <unistd.h>

#include "platform/linux/LinuxApplications.h"
#include "platform/linux/LinuxChildProcesses.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxClockFacts.h"
#include "platform/linux/LinuxFolders.h"
#include "platform/linux/LinuxMachineStatistics.h"
#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/LinuxProcessInspection.h"
#include "platform/linux/LinuxPropertyLists.h"
#include "platform/linux/LinuxServiceManager.h"
#include "platform/linux/LinuxSystemLog.h"
#include "platform/linux/NoFrontmost.h"
#include "platform/linux/PSIMemoryPressure.h"
#include "platform/linux/PlistPreferences.h"

namespace tolvane::linuxhost {

Host makeLinuxHost(const Environment& environment, LayeredPreferences::Overrides overrides) {
    auto folders = std::make_unique<LinuxFolders>(environment);
    auto stored = std::make_unique<PlistPreferences>(folders->configHome() + "/Tolvane/dev.tolvane.Tolvane.plist");
    // Readers and whoever acts must give one process one start time.
    const LinuxClockFacts clock = LinuxClockFacts::read();
    Host host;
    host.makeInspection = [clock, home = folders->home()] {
        return std::make_unique<LinuxProcessInspection>(
            LinuxInspectionOptions{.clock = clock, .uid = ::getuid(), .home = home});
    };
    host.machine = std::make_unique<LinuxMachineStatistics>();
    host.control =
        std::make_unique<LinuxProcessControl>([clock](std::uint64_t ticks) { return clock.dateOfTicks(ticks); });
    host.applications = std::make_unique<LinuxApplications>(LinuxApplications::settingsFor(*folders, environment));
    host.frontmost = std::make_unique<NoFrontmost>();
    host.services = std::make_unique<LinuxServiceManager>();
    host.children = std::make_unique<LinuxChildProcesses>();
    host.propertyLists = std::make_unique<LinuxPropertyLists>();
    host.pressure = std::make_unique<PSIMemoryPressure>();
    host.preferences = std::make_unique<LayeredPreferences>(std::move(stored), std::move(overrides));
    folders->setSyncFolderChoice(
        [choices = host.preferences.get()] { return choices->get<std::string>("syncFolder"); });
    host.folders = std::move(folders);
    host.clock = std::make_unique<LinuxClock>();
    host.log = std::make_unique<LinuxSystemLog>();
    host.selfPID = ::getpid();
    host.uid = ::getuid();
    return host;
}

}  // namespace tolvane::linuxhost
