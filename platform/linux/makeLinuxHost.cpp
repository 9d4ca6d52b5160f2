#include "platform/linux/makeLinuxHost.h"

#include <unistd.h>

#include "platform/linux/acts/LinuxChildProcesses.h"
#include "platform/linux/acts/LinuxProcessControl.h"
#include "platform/linux/applications/DesktopLauncher.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/applications/LinuxRunningApplications.h"
#include "platform/linux/bus/LinuxNotifications.h"
#include "platform/linux/bus/PortalAppearance.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/machine/LinuxClock.h"
#include "platform/linux/machine/LinuxClockFacts.h"
#include "platform/linux/machine/LinuxMachineStatistics.h"
#include "platform/linux/machine/PSIMemoryPressure.h"
#include "platform/linux/processes/LinuxProcessInspection.h"
#include "platform/linux/processes/LinuxServiceManager.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "platform/linux/session/LinuxSystemLog.h"
#include "platform/linux/session/LinuxTrays.h"
#include "platform/linux/session/XDGAutostart.h"
#include "platform/linux/settings/LinuxFolders.h"
#include "platform/linux/settings/LinuxPropertyLists.h"
#include "platform/linux/settings/PlistPreferences.h"
#include "platform/linux/windows/SessionFrontmost.h"
#include "platform/linux/windows/WindowSession.h"
#include "platform/linux/windows/XCovers.h"

namespace tolvane::linuxhost {

namespace {

/// What of the host speaks to the desktop: its windows and its bus.
void addDesktop(Host& host, LinuxApplications& applications, const LinuxFolders& folders,
                const Environment& environment, const LinuxClockFacts& clock, Toolkit toolkit) {
    const auto bus = toolkit.bus ? toolkit.bus : sessionBus(environment);
    const auto windows = std::make_shared<WindowSession>(environment, applications);
    const auto launcher = std::make_shared<Launcher>(bus, Launcher::presentEnvironment(), folders.home());
    host.running = std::make_unique<LinuxRunningApplications>(LinuxRunningApplications::Parts{
        .applications = applications,
        .control = *host.control,
        .windows = windows,
        .launcher = launcher,
        .dateOfTicks = [clock](std::uint64_t ticks) { return clock.dateOfTicks(ticks); }});
    auto choice = std::make_unique<FrontmostChoice>(windows, bus, environment("XDG_RUNTIME_DIR").value_or("/tmp"));
    host.frontmost = std::make_unique<SessionFrontmost>(applications, windows, std::move(choice));
    host.notifications = std::make_unique<LinuxNotifications>(bus);
    host.appearance = std::make_unique<PortalAppearance>(bus);
    host.loginItem = std::make_unique<XDGAutostart>(XDGAutostart::placesFor(folders, environment));
    host.desktop = std::make_unique<LinuxDesktop>(launcher, std::move(toolkit.copyText));
    const auto events = std::make_shared<XEvents>(environment("DISPLAY").value_or(""));
    host.trays = std::make_unique<LinuxTrays>(bus, events, toolkit.drawsOnX11);
    host.covers = std::make_unique<XCovers>(events, toolkit.drawsOnX11);
}

}  // namespace

std::shared_ptr<SessionBus> sessionBus(const Environment& environment) {
    // The bus lives in GLib's loop, and the toolkit runs without it where this is set.
    g_unsetenv("QT_NO_GLIB");
    return std::make_shared<SessionBus>(SessionBus::usualAddress(environment));
}

Host makeLinuxHost(const Environment& environment, const PreferencesLayer& layer, Toolkit toolkit) {
    auto folders = std::make_unique<LinuxFolders>(environment);
    std::unique_ptr<Preferences> stored =
        std::make_unique<PlistPreferences>(folders->configHome() + "/Tolvane/dev.tolvane.Tolvane.plist");
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
    auto applications = std::make_unique<LinuxApplications>(LinuxApplications::settingsFor(*folders, environment));
    addDesktop(host, *applications, *folders, environment, clock, std::move(toolkit));
    host.applications = std::move(applications);
    host.services = std::make_unique<LinuxServiceManager>();
    host.children = std::make_unique<LinuxChildProcesses>(environment("PATH").value_or(""));
    host.propertyLists = std::make_unique<LinuxPropertyLists>();
    host.pressure = std::make_unique<PSIMemoryPressure>();
    host.preferences = std::move(stored);
    if (layer) host.preferences = layer(std::move(host.preferences));
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
