#pragma once

#include <qcustomplot.h>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Gives a chart the ground, lines and letters of the present scheme; called again when the scheme changes.
/// Series have their own colours, which the charts set themselves.
void applyTokens(QCustomPlot& plot, const Look& look);

/// A chart without frames, margins and interaction, to be filled.
void makeQuiet(QCustomPlot& plot);

/// An area with a line on top.
void setArea(QCPGraph& graph, QColor colour, double opacity, const Tokens& tokens);

}  // namespace tolvane::desktop
