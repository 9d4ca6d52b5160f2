#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/Date.h"
#include "platform/ProcessControl.h"
#include "platform/RunningApplications.h"
#include "platform/linux/applications/AppProcesses.h"
#include "platform/linux/applications/DesktopLauncher.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/applications/OtherWindows.h"

namespace tolvane::linuxhost {

/// Running instances of an installed application, found by its desktop entry.
///
/// Asking to quit closes every window as its close button would. An instance without windows gets SIGTERM, and so does
/// one that stays after all its windows closed, as programs do that hide in the tray. An instance that keeps a window
/// open, perhaps with a question about unsaved work, is left alone. In sessions that hide windows no instance is asked:
/// SIGTERM would not give a program with unsaved work a chance to ask.
///
/// An instance counts as terminated when the application's own processes are gone. Helpers without a window belong to
/// the instance with windows beside which they run.
class LinuxRunningApplications : public RunningApplications {
public:
    struct Parts {
        LinuxApplications& applications;
        ProcessControl& control;
        std::shared_ptr<OtherWindows> windows;
        std::shared_ptr<Launcher> launcher;
        std::function<Date(std::uint64_t ticks)> dateOfTicks;
        std::string proc = "/proc";
        /// How long an instance may stay after it closed its windows.
        std::chrono::milliseconds grace = std::chrono::seconds(4);
    };

    /// Whatever `parts` refers to must outlive this object.
    explicit LinuxRunningApplications(Parts parts);
    ~LinuxRunningApplications() override;

    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) override;
    void openInBackground(const std::string& appPath, Opened opened) override;

private:
    class Instance;

    /// Instances may outlive this object; they do nothing from then on.
    std::shared_ptr<const Parts> parts_;
};

}  // namespace tolvane::linuxhost
