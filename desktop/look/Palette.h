#pragma once

#include <QPalette>

#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

/// The palette for widgets of the toolkit that do not use our tokens.
QPalette palette(const Tokens& tokens);

/// `opacity` is from 0 to 1.
QColor faded(QColor colour, double opacity);
/// The opaque result of `colour` at that opacity over `ground`.
QColor laidOver(QColor ground, QColor colour, double opacity);

}  // namespace tolvane::desktop
