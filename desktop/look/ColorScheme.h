#pragma once

#include <functional>

#include "base/Subscription.h"
#include "desktop/look/Appearance.h"
#include "platform/AppearanceSettings.h"

namespace tolvane::desktop {

/// Follows the desktop's appearance: the user's settings if the host reports them, otherwise the lightness of the
/// palette. Main thread.
class ColorScheme {
public:
    /// `changed` is called on every change after construction; `settings` outlives this object and is null on hosts
    /// that do not report them. Construct it before the program sets a palette of its own.
    ColorScheme(std::function<void(Appearance)> changed, AppearanceSettings* settings);
    ColorScheme(const ColorScheme&) = delete;
    ColorScheme& operator=(const ColorScheme&) = delete;
    ~ColorScheme() = default;

    Appearance appearance() const { return appearance_; }

private:
    void take(const AppearanceWishes& wishes);

    std::function<void(Appearance)> changed_;
    Appearance appearance_;
    Subscription changes_;
};

}  // namespace tolvane::desktop
