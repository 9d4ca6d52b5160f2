#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Host.h"
#include "platform/linux/windows/XDisplay.h"

namespace tolvane::linuxhost::testing {

/// The real desktop that this test runs in, with the test's own applications, each with a desktop entry and a program
/// file. Everything started ends with this object, by pid.
class Desk {
public:
    Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;
    ~Desk();

    /// Installs an application whose program has that habit (see tests/session/window); returns its entry's path.
    /// `more` are further lines of the entry.
    std::string install(const std::string& identifier, const std::string& habit, const std::string& more = {}) const;
    /// Starts the application's program as a user would, and waits for its window where the habit has one.
    Pid start(const std::string& identifier, const std::string& habit);
    /// Waits for a started program to end; false if it does not within the limit.
    bool hasEnded(Pid pid);
    bool isRunning(Pid pid) const;
    std::optional<XDisplay::Window> windowOf(Pid pid) const;
    /// Asks the window manager to activate its window, as a pager does.
    void activate(Pid pid) const;
    /// The pids of a running application's processes, whatever started them.
    std::vector<Pid> pidsOf(const std::string& identifier) const;

    Host host;

private:
    Pid execute(const std::string& identifier, const std::string& habit);
    std::string programOf(const std::string& identifier) const;

    std::string folder_;
    std::unique_ptr<XDisplay> display_;
    std::vector<Pid> children_;
};

}  // namespace tolvane::linuxhost::testing
