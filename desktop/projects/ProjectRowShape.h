#pragma once

#include <QHBoxLayout>
#include <QPushButton>

#include "desktop/look/Look.h"

/// What rows of running and parked projects share. Device-independent pixels at 100 % text.
namespace tolvane::desktop::ProjectRowShape {

inline constexpr int buttonHeight = 26;
inline constexpr int iconGap = 9;
inline constexpr int menuGap = 2;
inline constexpr int left = 16, right = 12, above = 10, below = 11;

inline void apply(QHBoxLayout& row) {
    row.setContentsMargins(left, above, right, below);
    row.setSpacing(0);
}

/// Only as wide as its label, since every row has one.
inline void apply(QPushButton& button, const Fonts& fonts) {
    constexpr int padding = 10;
    button.setFixedHeight(fonts.height(TextRole::body, buttonHeight));
    button.setFixedWidth(button.fontMetrics().horizontalAdvance(button.text()) + 2 * fonts.scaled(padding));
}

}  // namespace tolvane::desktop::ProjectRowShape
