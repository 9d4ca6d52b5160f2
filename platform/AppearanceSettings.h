#pragma once

#include <functional>
#include <optional>

#include "base/Subscription.h"

namespace tolvane {

/// How the user wants programs to look and move, as set in the desktop.
struct AppearanceWishes {
    /// Nullopt when the user has no preference; the toolkit's own colours then decide.
    std::optional<bool> dark;
    bool highContrast = false;
    bool reducedMotion = false;

    bool operator==(const AppearanceWishes&) const = default;
};

/// The desktop's settings of appearance. Main thread.
class AppearanceSettings {
public:
    virtual ~AppearanceSettings() = default;

    /// What is known by now. The first call begins to listen, and waits a moment at most for an answer that is about
    /// to come, so that the first window has the right colours; a later answer arrives as a change.
    virtual AppearanceWishes current() = 0;
    virtual Subscription onChange(std::function<void(const AppearanceWishes& wishes)> changed) = 0;
};

}  // namespace tolvane
