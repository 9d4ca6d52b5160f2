#pragma once

#include <QHBoxLayout>

/// What rows of running and of parked projects have in common. Device-independent pixels at 100 % text.
namespace tolvane::desktop::ProjectRowShape {

inline constexpr int buttonHeight = 26;
inline constexpr int iconGap = 9;
inline constexpr int menuGap = 4;
inline constexpr int left = 16, right = 12, above = 9, below = 9;

inline void apply(QHBoxLayout& row) {
    row.setContentsMargins(left, above, right, below);
    row.setSpacing(0);
}

}  // namespace tolvane::desktop::ProjectRowShape
