#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Subscription.h"

namespace tolvane {

struct Notification {
    /// Another one each time, so that none replaces another.
    std::string identifier;
    /// Plain text, as is `body`: a host that reads markup gets it escaped.
    std::string title;
    std::string body;
    /// What a click on it opens; comes back through `onClick`.
    std::optional<std::string> section;

    bool operator==(const Notification&) const = default;
};

/// Words to the user outside the window. Main thread; posting neither waits nor fails aloud.
class Notifications {
public:
    using Clicked = std::function<void(std::optional<std::string> section)>;

    virtual ~Notifications() = default;

    /// Delivers at once, without sound.
    virtual void post(const Notification& notification) = 0;
    /// Asks the user once, where the host wants to be asked; the answer is not told.
    virtual void requestPermission() = 0;
    virtual Subscription onClick(Clicked clicked) = 0;
};

}  // namespace tolvane
