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
    /// The application's possible names, the most reliable first: a desktop entry's name, or a window class.
    std::vector<std::string> names = {};

    bool operator==(const FrontWindow&) const = default;
};

/// One way to learn which window is in front. Changes arrive as events: nothing wakes while the desktop is quiet. Main
/// thread, with its event loop.
class FrontmostSource {
public:
    virtual ~FrontmostSource() = default;

    /// False while it does not know whether any window is in front.
    virtual bool canTell() const = 0;
    /// Nullopt while no window is in front.
    virtual std::optional<FrontWindow> inFront() const = 0;
    /// Calls back whenever either answer may have changed.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane::linuxhost
