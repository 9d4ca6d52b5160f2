#pragma once

#include <QPalette>

#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

/// What widgets that know no tokens draw with.
QPalette palette(const Tokens& tokens);

/// `colour` at an opacity from 0 to 1.
QColor faded(QColor colour, double opacity);
/// `colour` at an opacity laid over an opaque ground.
QColor laidOver(QColor ground, QColor colour, double opacity);

}  // namespace tolvane::desktop
