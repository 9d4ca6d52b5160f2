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
/// Asking to quit is closing every window as its close button would. An instance without windows gets SIGTERM; so does
/// one whose windows have all gone and that stays, as programs do that hide in the tray. One that keeps a window open,
/// with a question about unsaved work perhaps, is left alone. In sessions that hide windows nobody is asked: to a
/// program with unsaved work SIGTERM would not be a question.
///
/// An instance counts as terminated when the application's own processes are gone. Helpers without a window that run
/// beside one with windows belong to that.
class LinuxRunningApplications : public RunningApplications {
public:
    struct Parts {
        LinuxApplications& applications;
        ProcessControl& control;
        std::shared_ptr<OtherWindows> windows;
        std::shared_ptr<Launcher> launcher;
        std::function<Date(std::uint64_t ticks)> dateOfTicks;
        std::string proc = "/proc";
        /// How long an instance may stay without windows after it closed them.
        std::chrono::milliseconds grace = std::chrono::seconds(4);
    };

    /// What `parts` refers to outlives this.
    explicit LinuxRunningApplications(Parts parts);
    ~LinuxRunningApplications() override;

    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) override;
    void openInBackground(const std::string& appPath, Opened opened) override;

private:
    class Instance;

    /// Instances may outlive this; what they do then is nothing.
    std::shared_ptr<const Parts> parts_;
};

}  // namespace tolvane::linuxhost
