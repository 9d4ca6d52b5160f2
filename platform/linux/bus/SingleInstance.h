#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Subscription.h"

namespace tolvane::linuxhost {

class SessionBus;

/// One running program for the session: the first owns its name on the bus and answers there as an
/// org.freedesktop.Application, so that desktops can start it, hand it files and name its actions; a later one hands
/// over what it was started with. A bus that is started again gives the first its name back. Main thread.
class SingleInstance {
public:
    /// What somebody wants of the running program; nothing of both is to be seen.
    struct Request {
        /// Absolute paths.
        std::vector<std::string> files = {};
        /// By name, as desktops and notifications call them.
        std::optional<std::string> action = std::nullopt;

        bool operator==(const Request&) const = default;
    };
    enum class Outcome {
        /// We are the one.
        first,
        /// Another one runs and took the request.
        handedOver,
        /// Another one runs and does not answer.
        silent,
        /// There is no bus to ask.
        alone
    };

    static constexpr const char* usualName = "dev.tolvane.Tolvane";

    explicit SingleInstance(std::shared_ptr<SessionBus> bus, std::string name = usualName);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Settles who is the one, and waits for it: at most for the limit. Called once, before the event loop runs.
    /// `token` is what the desktop gave this start so that a window may come to the front.
    Outcome settle(const Request& request, const std::string& token = {},
                   std::chrono::milliseconds limit = std::chrono::seconds(5));
    /// Tells of each request from outside. The first one to subscribe hears of what came before, from the event loop.
    Subscription onRequest(std::function<void(Request)> requested);

private:
    class Object;
    std::shared_ptr<Object> object_;
};

}  // namespace tolvane::linuxhost
