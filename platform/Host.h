#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/Pid.h"
#include "platform/AppearanceSettings.h"
#include "platform/Applications.h"
#include "platform/ChildProcesses.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Dock.h"
#include "platform/Folders.h"
#include "platform/LoginItem.h"
#include "platform/MachineStatistics.h"
#include "platform/MemoryPressure.h"
#include "platform/Notifications.h"
#include "platform/Preferences.h"
#include "platform/ProcessControl.h"
#include "platform/ProcessInspection.h"
#include "platform/PropertyLists.h"
#include "platform/RunningApplications.h"
#include "platform/ServiceManager.h"
#include "platform/Symbols.h"
#include "platform/SystemLog.h"
#include "platform/Trays.h"
#include "platform/WindowCovers.h"
#include "platform/Windows.h"

namespace tolvane {

/// Everything the program asks of the machine it runs on. Made once, in main or by a test; outlives the model.
struct Host {
    /// Each reader gets its own inspection, which caches what it read and belongs to the reader's thread.
    std::function<std::unique_ptr<ProcessInspection>()> makeInspection;
    std::unique_ptr<MachineStatistics> machine;
    std::unique_ptr<ProcessControl> control;
    std::unique_ptr<Applications> applications;
    std::unique_ptr<RunningApplications> running;
    std::unique_ptr<Frontmost> frontmost;
    std::unique_ptr<Notifications> notifications;
    std::unique_ptr<ChildProcesses> children;
    /// May run a tool through `children`.
    std::unique_ptr<ServiceManager> services;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<PropertyLists> propertyLists;
    std::unique_ptr<MemoryPressure> pressure;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<Folders> folders;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<SystemLog> log;
    std::unique_ptr<Trays> trays;

    // Null on hosts that have no such thing.

    /// The program's windows as the system sees them, where it knows more about them than the toolkit does.
    std::unique_ptr<Windows> windows;
    /// For systems that do not report that, but report what covers a window.
    std::unique_ptr<WindowCovers> covers;
    std::unique_ptr<Symbols> symbols;
    /// For desktops whose settings the toolkit does not follow.
    std::unique_ptr<AppearanceSettings> appearance;
    std::unique_ptr<Dock> dock;

    Pid selfPID = 0;
    std::uint32_t uid = 0;
    /// The user's locale as an ICU identifier. Texts are English; numbers and lists follow it.
    std::string locale = "en_US";
};

}  // namespace tolvane
