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

    /// Asks politely: the application may refuse, as with unsaved changes. Does not wait.
    virtual void terminate() = 0;
    /// Ends it without asking.
    virtual void forceTerminate() = 0;
    virtual bool isTerminated() const = 0;
    /// The installed application that it is an instance of; none where the host does not know.
    virtual std::optional<std::string> appPath() const = 0;
};

/// Applications that run, and starting them. Main thread; no call blocks for longer than a round trip to the desktop,
/// and each of those has an end.
class RunningApplications {
public:
    /// None when the application was started, else the host's words for what went wrong.
    using Opened = std::function<void(std::optional<std::string> error)>;

    virtual ~RunningApplications() = default;

    /// All running instances of this user, whoever started them; empty when there are none.
    virtual std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) = 0;
    /// Starts it without bringing it to the front, and tells once. It never asks the user anything.
    virtual void openInBackground(const std::string& appPath, Opened opened) = 0;
};

}  // namespace tolvane
