#pragma once

#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

/// The user's choices of colour scheme, contrast and motion.
struct Appearance {
    bool dark = false;
    bool highContrast = false;
    bool reducedMotion = false;

    bool operator==(const Appearance&) const = default;

    constexpr Tokens tokens() const {
        const auto& scheme = dark ? darkTokens : lightTokens;
        return highContrast ? withHighContrast(scheme) : scheme;
    }
};

}  // namespace tolvane::desktop
