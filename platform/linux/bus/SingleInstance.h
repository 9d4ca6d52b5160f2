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

/// One running program per session. The first owns the name on the bus and answers there as an
/// org.freedesktop.Application, so desktops can start it, hand it files and invoke its actions; a later one hands over
/// its arguments and ends. When the bus restarts, the first gets its name back. Main thread.
class SingleInstance {
public:
    /// What a second start or the desktop asks of the running program; with neither field set, to come forward.
    struct Request {
        /// Absolute paths.
        std::vector<std::string> files = {};
        /// By name, as desktops and notifications spell it.
        std::optional<std::string> action = std::nullopt;

        bool operator==(const Request&) const = default;
    };
    enum class Outcome {
        /// This program is the one.
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

    /// Finds out which program is the one, waiting at most for the limit. Call once, before the event loop runs.
    /// `token` is what the desktop gave this start so that a window may come to the front.
    Outcome settle(const Request& request, const std::string& token = {},
                   std::chrono::milliseconds limit = std::chrono::seconds(5));
    /// Reports each request from outside. The first subscriber also gets earlier ones, from the event loop.
    Subscription onRequest(std::function<void(Request)> requested);

private:
    class Object;
    std::shared_ptr<Object> object_;
};

}  // namespace tolvane::linuxhost
