#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// The tray, where the desktop shows icons of running programs. It may appear late, disappear and return. Main thread;
/// nothing here waits.
class Trays {
public:
    virtual ~Trays() = default;

    /// Whether there is a place for an icon, as far as is known yet.
    virtual bool present() const = 0;
    /// A changed number means a new place: the icon made for the previous one must be recreated.
    virtual int place() const { return 0; }
    /// Calls back whenever either changes. The host starts looking for a tray at the first subscription.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
