#include "desktop/charts/ChartTokens.h"

#include <algorithm>

#include "desktop/look/Palette.h"

namespace tolvane::desktop {

namespace {

constexpr double seriesWidth = 1.25;

void dress(QCPAxis& axis, const Look& look) {
    const auto& tokens = look.tokens();
    axis.setBasePen(Qt::NoPen);
    axis.setTickPen(Qt::NoPen);
    axis.setSubTickPen(Qt::NoPen);
    axis.setTickLabelColor(tokens.text2);
    axis.setTickLabelFont(look.fonts().figures(TextRole::caption));
    axis.grid()->setPen(QPen(tokens.hairline, 1));
    axis.grid()->setZeroLinePen(QPen(tokens.hairline, 1));
}

}  // namespace

void makeQuiet(QCustomPlot& plot) {
    plot.setAttribute(Qt::WA_OpaquePaintEvent, false);
    plot.setBackground(QBrush(Qt::NoBrush));
    plot.setAntialiasedElements(QCP::aeAll);
    plot.setNoAntialiasingOnDrag(false);
    plot.setInteractions(QCP::iNone);
    // With the hint on, every replot repaints the window at once, pending changes included, in the middle of a tick.
    plot.setPlottingHint(QCP::phImmediateRefresh, false);
    plot.setFocusPolicy(Qt::NoFocus);
    plot.setContextMenuPolicy(Qt::PreventContextMenu);
    auto* area = plot.axisRect();
    area->setAutoMargins(QCP::msNone);
    area->setMargins(QMargins());
    area->setMinimumMargins(QMargins());
}

void applyTokens(QCustomPlot& plot, const Look& look) {
    for (auto* axis : plot.axisRect()->axes()) dress(*axis, look);
}

void setArea(QCPGraph& graph, QColor colour, double opacity, const Tokens& tokens) {
    graph.setPen(QPen(colour, seriesWidth));
    graph.setBrush(faded(colour, std::min(1.0, opacity + tokens.areaOpacityBonus)));
}

}  // namespace tolvane::desktop
