#pragma once

#include <qcustomplot.h>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Applies the background, grid lines and fonts of the current scheme to a chart; call it again when the scheme
/// changes. Charts set the colours of their series themselves.
void applyTokens(QCustomPlot& plot, const Look& look);

/// Removes frames, margins and interaction from a new chart.
void makeQuiet(QCustomPlot& plot);

/// Draws the graph as an area with a line on top.
void setArea(QCPGraph& graph, QColor colour, double opacity, const Tokens& tokens);

}  // namespace tolvane::desktop
