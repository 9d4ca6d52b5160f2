#include "platform/macos/MacCalls.h"

#include <utility>

#include "platform/macos/applications/MacApplications.h"
#include "platform/macos/applications/MacFrontmost.h"
#include "platform/macos/applications/MacRunningApplications.h"
#include "platform/macos/dispatch/MacClock.h"
#include "platform/macos/dispatch/MacMemoryPressure.h"
#include "platform/macos/kernel/KernelNumbers.h"
#include "platform/macos/kernel/MacMachineStatistics.h"
#include "platform/macos/kernel/MacProcessControl.h"
#include "platform/macos/kernel/MacProcessInspection.h"
#include "platform/macos/kernel/SpawnedChildProcesses.h"
#include "platform/macos/session/DockPolicy.h"
#include "platform/macos/session/LaunchdServices.h"
#include "platform/macos/session/MacDesktop.h"
#include "platform/macos/session/MacLoginItem.h"
#include "platform/macos/session/MacNotifications.h"
#include "platform/macos/session/MacSymbols.h"
#include "platform/macos/session/MacWindows.h"
#include "platform/macos/session/MenuBar.h"
#include "platform/macos/settings/MacFolders.h"
#include "platform/macos/settings/MacPreferences.h"
#include "platform/macos/settings/MacPropertyLists.h"

namespace tolvane::machost {

namespace {

void addKernel(Host& host, const Kernel& kernel, const std::string& home) {
    host.makeInspection = [kernel] { return std::make_unique<MacProcessInspection>(kernel); };
    host.machine = std::make_unique<MacMachineStatistics>(kernel);
    host.control = std::make_unique<MacProcessControl>(kernel);
    host.children = std::make_unique<SpawnedChildProcesses>(kernel, closeByDefault, home);
    host.services = std::make_unique<LaunchdServices>(*host.children);
    host.selfPID = kernel->ownPid();
    host.uid = kernel->ownUser();
}

void addFrameworks(Host& host, const ObjC& runtime, const OnMain& onMain) {
    auto folders = std::make_unique<MacFolders>(*runtime);
    host.applications = std::make_unique<MacApplications>(runtime, folders->caches() + "/icons");
    host.running = std::make_unique<MacRunningApplications>(runtime, onMain);
    host.frontmost = std::make_unique<MacFrontmost>(runtime);
    host.notifications = std::make_unique<MacNotifications>(runtime, onMain);
    host.loginItem = std::make_unique<MacLoginItem>(runtime);
    host.desktop = std::make_unique<MacDesktop>(runtime);
    host.propertyLists = std::make_unique<MacPropertyLists>(runtime);
    host.folders = std::move(folders);
}

void addScreen(Host& host, const ObjC& runtime) {
    host.trays = std::make_unique<MenuBar>();
    host.windows = std::make_unique<MacWindows>(runtime);
    host.symbols = std::make_unique<MacSymbols>(runtime);
    host.dock = std::make_unique<DockPolicy>(runtime);
}

}  // namespace

Host hostOn(const MacCalls& calls, const PreferencesLayer& layer, const OnMain& onMain) {
    Host host;
    addFrameworks(host, calls.runtime, onMain);
    addKernel(host, calls.kernel, host.folders->home());
    addScreen(host, calls.runtime);
    host.pressure = std::make_unique<MacMemoryPressure>(calls.dispatch, onMain);
    host.clock = std::make_unique<MacClock>(calls.dispatch, onMain);
    host.preferences = std::make_unique<MacPreferences>(calls.runtime);
    if (layer) host.preferences = layer(std::move(host.preferences));
    host.log = std::make_unique<UnifiedLog>(calls.log);
    return host;
}

}  // namespace tolvane::machost
