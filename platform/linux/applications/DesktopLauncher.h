#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Starts applications through their desktop entries: over the bus where the entry says so, else its command line. What
/// is started lives in a session and, under a service manager, in a scope of its own; it gets the environment that this
/// program was started with, and no wish to come to the front. Main thread; shared, since what it asks may answer late.
class Launcher : public std::enable_shared_from_this<Launcher> {
public:
    /// None when it was started, else the reason in words.
    using Launched = std::function<void(std::optional<std::string> error)>;

    /// `environment` are entries NAME=value; `home` is where programs start that name no folder. `limit` is
    /// for applications that are asked over the bus.
    Launcher(std::shared_ptr<SessionBus> bus, std::vector<std::string> environment, std::string home,
             std::chrono::milliseconds limit = std::chrono::seconds(10));

    /// This process's, as it is now.
    static std::vector<std::string> presentEnvironment();

    /// Tells once; within the limit, since an application that is asked over the bus may never answer.
    void launch(const std::string& entryPath, const std::vector<std::string>& files, Launched launched);

private:
    struct Entry;

    void activate(std::shared_ptr<const Entry> entry, const std::vector<std::string>& files, Launched launched);
    std::optional<std::string> execute(const Entry& entry, const std::vector<std::string>& files) const;
    std::vector<std::string> withTerminal(std::vector<std::string> command) const;
    void moveToScope(const std::string& identifier, int pid) const;

    std::shared_ptr<SessionBus> bus_;
    std::vector<std::string> environment_;
    std::string home_;
    std::chrono::milliseconds limit_;
};

}  // namespace tolvane::linuxhost
