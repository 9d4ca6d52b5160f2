#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Starts applications through their desktop entries: over the bus if the entry asks for it, else by its command line.
/// An application runs in its own session and, under a service manager, in its own scope; it gets the environment that
/// this program was started with, and no request to come to the front. Main thread; shared, since answers may come
/// late.
class Launcher : public std::enable_shared_from_this<Launcher> {
public:
    /// Gets nullopt when the application was started, else the reason as text.
    using Launched = std::function<void(std::optional<std::string> error)>;

    /// `environment` holds entries NAME=value; programs that name no folder start in `home`. `limit` applies to
    /// applications that are asked over the bus.
    Launcher(std::shared_ptr<SessionBus> bus, std::vector<std::string> environment, std::string home,
             std::chrono::milliseconds limit = std::chrono::seconds(10));

    /// The current environment of this process.
    static std::vector<std::string> presentEnvironment();

    /// Calls `launched` once, and within the limit: an application that is asked over the bus may never answer.
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
