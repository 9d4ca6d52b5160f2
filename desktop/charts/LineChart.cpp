#include "desktop/charts/LineChart.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "app/rows/Format.h"
#include "core/words/DateWords.h"
#include "desktop/charts/ChartTokens.h"
#include "desktop/charts/RoundTicks.h"
#include "desktop/look/AccessibleRoles.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr double areaOpacity = 0.35;
/// Charts lower than this label only their highest value.
constexpr int twoFiguresFrom = 56;
constexpr int figureGap = 8;
constexpr QLatin1String usualFigure("2,000 MB");
constexpr int timesGap = 5, legendGap = 4;
constexpr int markWidth = 10, markHeight = 4, markGap = 5, entryGap = 12;

QVector<double> times(const std::vector<Date>& dates) {
    QVector<double> values;
    values.reserve(static_cast<qsizetype>(dates.size()));
    for (const auto& date : dates) values.push_back(date.time_since_epoch().count());
    return values;
}

}  // namespace

LineChart::LineChart(const Look& look, std::string locale, int plotHeight, QWidget* parent)
    : QWidget(parent), look_(look), locale_(std::move(locale)), plotHeight_(plotHeight), plot_(new QCustomPlot(this)) {
    setAccessibleRole(*this, QAccessible::Chart);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    plot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    makeQuiet(*plot_);
    plot_->xAxis->setVisible(false);
    plot_->yAxis->setVisible(true);
    plot_->yAxis->setTickLabels(false);
    plot_->yAxis->setTicks(true);
    connect(&look, &Look::changed, this, [this] { dress(); });
}

void LineChart::show(const InspectorChart& chart) {
    if (chart == shown_) return;
    const bool resized = chart.series.size() != shown_.series.size();
    shown_ = chart;
    double most = 0;
    const auto dates = times(chart.dates);
    while (plot_->graphCount() > static_cast<int>(chart.series.size())) plot_->removeGraph(plot_->graphCount() - 1);
    for (std::size_t series = 0; series < chart.series.size(); ++series) {
        const auto& values = chart.series[series].values;
        auto* graph =
            static_cast<int>(series) < plot_->graphCount() ? plot_->graph(static_cast<int>(series)) : plot_->addGraph();
        graph->setData(dates, QVector<double>(values.begin(), values.end()), true);
        for (const double value : values) most = std::max(most, value);
    }
    top_ = roundTop(most);
    if (!dates.isEmpty()) plot_->xAxis->setRange(dates.front(), std::max(dates.back(), dates.front() + 1));
    /// Leaves room for the whole width of the top line.
    plot_->yAxis->setRange(0, top_ * (1 + 1.0 / plotHeight_));
    setAccessibleName(qtText(chart.accessibleText));
    setAccessibleDescription(latestFigures());
    setToolTip(tip(qtText(chart.accessibleText)));
    if (resized) updateGeometry();
    place();
    dress();
    update();
}

QColor LineChart::colour(std::size_t series) const {
    return series == 0 ? look_.tokens().used : look_.tokens().compressed;
}

void LineChart::dress() {
    applyTokens(*plot_, look_);
    auto ticks = QSharedPointer<QCPAxisTickerFixed>::create();
    ticks->setTickStep(plotHeight_ >= twoFiguresFrom ? top_ / 2 : top_);
    ticks->setScaleStrategy(QCPAxisTickerFixed::ssNone);
    plot_->yAxis->setTicker(ticks);
    for (int series = 0; series < plot_->graphCount(); ++series) {
        const auto number = static_cast<std::size_t>(series);
        setArea(*plot_->graph(series), colour(number), areaOpacity, look_.tokens());
        if (series > 0) plot_->graph(series)->setBrush(Qt::NoBrush);
    }
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

QString LineChart::figure(double value) const {
    return qtText(Format::decimal(value, 0, 1, locale_) + ' ' + shown_.unit);
}

/// The axes and the latest value of each series, for screen readers.
QString LineChart::latestFigures() const {
    QStringList parts;
    for (const auto& each : shown_.series) {
        if (!each.values.empty()) parts << qtText(each.name) + QLatin1Char(' ') + figure(each.values.back());
    }
    if (parts.isEmpty()) return {};
    QStringList axes;
    for (const auto& label : {shown_.xLabel, shown_.yLabel, shown_.seriesLabel}) {
        if (!label.empty()) axes << qtText(label);
    }
    const auto before = axes.isEmpty() ? QString() : axes.join(QStringLiteral(", ")) + QStringLiteral(": ");
    return before + parts.join(QStringLiteral(", "));
}

/// A width for usual values, so that stacked charts line up unless one has unusually long labels.
int LineChart::labelWidth() const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::caption));
    return std::max(metrics.horizontalAdvance(figure(top_)), metrics.horizontalAdvance(usualFigure)) + figureGap;
}

int LineChart::captionHeight() const { return look_.fonts().lineHeight(TextRole::caption); }

QSize LineChart::sizeHint() const {
    const int line = captionHeight();
    const int half = line / 2;
    return {Sizes::inspectorLeast, half + plotHeight_ + timesGap + line + (hasLegend() ? legendGap + line : 0)};
}

/// The top label is centred on its line, so the plot starts half a label below the top.
QRect LineChart::plotRect() const { return {0, captionHeight() / 2, width() - labelWidth(), plotHeight_}; }

void LineChart::place() { plot_->setGeometry(plotRect()); }

void LineChart::resizeEvent(QResizeEvent*) { place(); }

void LineChart::paintEvent(QPaintEvent*) {
    if (shown_.dates.empty()) return;
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setFont(look_.fonts().figures(TextRole::caption));
    painter.setPen(look_.tokens().text2);
    paintFigures(painter);
    paintTimes(painter);
    if (hasLegend()) paintLegend(painter);
}

void LineChart::paintFigures(QPainter& painter) const {
    const auto plot = plotRect();
    const auto draw = [&](double value) {
        const int y = plot.bottom() - static_cast<int>(value / top_ * plot.height());
        painter.drawText(QRect(plot.right(), y - captionHeight() / 2, labelWidth(), captionHeight()),
                         Qt::AlignRight | Qt::AlignVCenter, figure(value));
    };
    draw(top_);
    if (plotHeight_ >= twoFiguresFrom) draw(top_ / 2);
}

/// A short history needs only one time label.
void LineChart::paintTimes(QPainter& painter) const {
    const auto plot = plotRect();
    const QRect line(plot.left(), plot.bottom() + timesGap, plot.width(), captionHeight());
    const auto first = shown_.dates.front(), last = shown_.dates.back();
    const auto text = [&](Date date) { return qtText(DateWords::time(date, locale_)); };
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, text(last));
    if (text(first) == text(last)) return;
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, text(first));
    const auto middle = text(first + (last - first) / 2);
    const int needed = 3 * QFontMetrics(painter.font()).horizontalAdvance(middle) + 2 * entryGap;
    if (needed <= plot.width() && middle != text(first)) painter.drawText(line, Qt::AlignCenter, middle);
}

void LineChart::paintLegend(QPainter& painter) const {
    int x = 0;
    const int top = plotRect().bottom() + timesGap + captionHeight() + legendGap;
    const QFontMetrics metrics(painter.font());
    for (std::size_t series = 0; series < shown_.series.size(); ++series) {
        const QRect mark(x, top + (captionHeight() - markHeight) / 2 + 1, markWidth, markHeight);
        StyleControls::drawShape(painter, mark, markHeight / 2.0, colour(series), {});
        const auto name = qtText(shown_.series[series].name);
        x += markWidth + markGap;
        painter.drawText(QRect(x, top, metrics.horizontalAdvance(name) + 1, captionHeight()), Qt::AlignVCenter, name);
        x += metrics.horizontalAdvance(name) + entryGap;
    }
}

}  // namespace tolvane::desktop
