#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane {

/// One running instance of an application. Main thread; it stays valid after the instance has ended.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    /// Asks the application to quit; it may refuse, as with unsaved changes. Does not wait.
    virtual void terminate() = 0;
    /// Kills it without asking.
    virtual void forceTerminate() = 0;
    virtual bool isTerminated() const = 0;
    /// The installed application that it is an instance of; nullopt where the host does not know.
    virtual std::optional<std::string> appPath() const = 0;
};

/// Running applications, and starting them. Main thread; no call blocks for longer than one round trip to the desktop,
/// which has a time limit.
class RunningApplications {
public:
    /// Nullopt when the application was started, otherwise the host's message for what went wrong.
    using Opened = std::function<void(std::optional<std::string> error)>;

    virtual ~RunningApplications() = default;

    /// All running instances of this user, however they were started.
    virtual std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) = 0;
    /// Starts it without bringing it to the front and calls `opened` once. Never asks the user anything.
    virtual void openInBackground(const std::string& appPath, Opened opened) = 0;
};

}  // namespace tolvane
