#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Subscription.h"

namespace tolvane {

struct Notification {
    /// Unique, so that no notification replaces another.
    std::string identifier;
    /// Plain text, like `body`; a host whose daemon reads markup escapes both.
    std::string title;
    std::string body;
    /// The section that a click opens; passed to `onClick`.
    std::optional<std::string> section;

    bool operator==(const Notification&) const = default;
};

/// Messages to the user outside the window. Main thread; posting does not wait and reports no failure.
class Notifications {
public:
    using Clicked = std::function<void(std::optional<std::string> section)>;

    virtual ~Notifications() = default;

    /// Delivers at once, without sound.
    virtual void post(const Notification& notification) = 0;
    /// Asks the user once, on hosts that require permission; the answer is not reported.
    virtual void requestPermission() = 0;
    virtual Subscription onClick(Clicked clicked) = 0;
};

}  // namespace tolvane
