#include "desktop/charts/LoadChart.h"

#include <QHBoxLayout>
#include <algorithm>

#include "desktop/charts/ChartTokens.h"
#include "desktop/look/AccessibleRoles.h"

namespace tolvane::desktop {

namespace {

constexpr int chartHeight = 40;
constexpr double efficiencyOpacity = 0.5, performanceOpacity = 0.6;
constexpr double hour = 3600;
/// Space above the highest point.
constexpr double headroom = 1.15;

}  // namespace

LoadChart::LoadChart(const Look& look, QWidget* parent) : QWidget(parent), look_(look), plot_(new QCustomPlot(this)) {
    setAccessibleRole(*this, QAccessible::Chart);
    setFixedHeight(chartHeight);
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(plot_);
    plot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    makeQuiet(*plot_);
    plot_->xAxis->setVisible(false);
    plot_->yAxis->setVisible(false);
    auto* efficiency = plot_->addGraph();
    auto* all = plot_->addGraph();
    all->setChannelFillGraph(efficiency);
    connect(&look, &Look::changed, this, [this] { dress(); });
    dress();
}

void LoadChart::dress() {
    const auto& tokens = look_.tokens();
    applyTokens(*plot_, look_);
    setArea(*plot_->graph(0), tokens.efficiency, efficiencyOpacity, tokens);
    setArea(*plot_->graph(1), tokens.performance, performanceOpacity, tokens);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void LoadChart::show(const std::vector<LoadPoint>& points) {
    if (points.empty()) return;
    QVector<double> times, efficiency, all;
    double most = 0.1;
    for (const auto& point : points) {
        times.push_back(point.date.time_since_epoch().count());
        efficiency.push_back(point.efficiency);
        all.push_back(point.efficiency + point.performance);
        most = std::max(most, all.back());
    }
    plot_->graph(0)->setData(times, efficiency, true);
    plot_->graph(1)->setData(times, all, true);
    const double start = std::max(times.front(), times.back() - hour);
    plot_->xAxis->setRange(start, times.back());
    plot_->yAxis->setRange(0, most * headroom);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

}  // namespace tolvane::desktop
