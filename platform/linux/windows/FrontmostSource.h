#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "base/Subscription.h"

namespace tolvane::linuxhost {

/// The window that the user works in, as its session describes it.
struct FrontWindow {
    std::optional<Pid> pid = std::nullopt;
    /// What its application is called, the surest name first: a desktop entry's, or a class.
    std::vector<std::string> names = {};

    bool operator==(const FrontWindow&) const = default;
};

/// One of the ways to learn which window is in front. News come as events: nothing wakes while the desktop is quiet.
/// Main thread, with its event loop.
class FrontmostSource {
public:
    virtual ~FrontmostSource() = default;

    /// False while it does not know whether anybody is in front.
    virtual bool canTell() const = 0;
    /// None while nobody is.
    virtual std::optional<FrontWindow> inFront() const = 0;
    /// Calls back whenever either of the answers may have changed.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane::linuxhost
