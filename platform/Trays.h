#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// Where the desktop shows icons of programs that run: in a tray. It may come late, go and come back. Main
/// thread; nothing here waits.
class Trays {
public:
    virtual ~Trays() = default;

    /// There is a place for an icon, as far as it is known by now.
    virtual bool present() const = 0;
    /// Another number is another place: an icon that was made for the one before has to be made anew.
    virtual int place() const { return 0; }
    /// Calls back whenever either changes. Looking for a place begins with the first of them.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
