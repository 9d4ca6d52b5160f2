#include "desktop/charts/MomentChart.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/charts/ChartTokens.h"
#include "desktop/look/AccessibleRoles.h"
#include "desktop/look/Palette.h"
#include "desktop/look/Paragraph.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

namespace {

constexpr double usedOpacity = 0.35, loadOpacity = 0.55;
constexpr double bandOpacity = 0.15;
constexpr double lineWidth = 1.5;
constexpr int figureGap = 8, timeGap = 5, plotGap = 14, timeDistance = 12;
constexpr int legendLine = 16, legendSquare = 10, legendMarkGap = 7, legendGap = 18;
constexpr int dotSize = 9;
/// Space right of the plot, so that the dots of the latest moment are not cut off.
constexpr int dotRoom = dotSize / 2 + 2;

bool isArea(HistorySeriesKind kind) { return kind != HistorySeriesKind::compressed && kind != HistorySeriesKind::swap; }

int markWidth(HistorySeriesKind kind) { return isArea(kind) ? legendSquare : legendLine; }

/// Each series has its own line style: colour alone must not distinguish them.
Qt::PenStyle styleOf(HistorySeriesKind kind) {
    return kind == HistorySeriesKind::swap ? Qt::CustomDashLine : Qt::SolidLine;
}

QPen penOf(QColor colour, HistorySeriesKind kind) {
    QPen pen(colour, lineWidth);
    pen.setCapStyle(Qt::FlatCap);
    if (styleOf(kind) == Qt::CustomDashLine) pen.setDashPattern({5 / lineWidth, 3 / lineWidth});
    return pen;
}

double seconds(Date date) { return date.time_since_epoch().count(); }

/// The value of a series at a date, or nullopt if it has none there.
std::optional<double> valueAt(const HistoryChart& chart, const HistorySeries& series, Date date) {
    const auto found = std::ranges::find(chart.dates, date);
    if (found == chart.dates.end()) return std::nullopt;
    const double value = series.values[static_cast<std::size_t>(found - chart.dates.begin())];
    return std::isnan(value) ? std::nullopt : std::optional(value);
}

/// "Time, GB, Kind: Used, Compressed, Swap; ", for screen readers.
QString axesOf(const HistoryChart& chart) {
    QStringList names;
    for (const auto& series : chart.series) names << qtText(series.name);
    const auto series = names.join(QStringLiteral(", "));
    const auto kind = chart.seriesLabel.empty() ? series : qtText(chart.seriesLabel) + QStringLiteral(": ") + series;
    return QStringList{qtText(chart.xLabel), qtText(chart.yLabel), kind}.join(QStringLiteral(", ")) +
           QStringLiteral("; ");
}

}  // namespace

/// Drawn above the plot, which paints its background and lines in one piece.
class MomentChart::Rule : public QWidget {
public:
    explicit Rule(MomentChart& chart) : QWidget(&chart), chart_(chart) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        chart_.paintRule(painter);
    }

private:
    MomentChart& chart_;
};

MomentChart::MomentChart(const Look& look, QWidget* parent)
    : QWidget(parent), look_(look), plot_(new QCustomPlot(this)), rule_(new Rule(*this)) {
    setAccessibleRole(*this, QAccessible::Chart);
    setFocusPolicy(Qt::StrongFocus);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    plot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    makeQuiet(*plot_);
    plot_->xAxis->setVisible(false);
    plot_->yAxis->setTickLabels(false);
    connect(&look, &Look::changed, this, [this] { dress(); });
}

void MomentChart::show(const HistoryChart& chart, const std::vector<HistoryTick>& marks, const QString& moment) {
    const bool isNew = chart != shown_ || marks != marks_;
    setAccessibleName(qtText(chart.spoken));
    const auto described = axesOf(chart) + moment;
    if (described != accessibleDescription()) {
        setAccessibleDescription(described);
        QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    }
    if (!isNew) return;
    const bool onlyFocus = [&] {
        auto other = chart;
        other.focus = shown_.focus;
        return other == shown_ && marks == marks_;
    }();
    shown_ = chart;
    marks_ = marks;
    if (onlyFocus) return rule_->update();
    setSeries();
    updateGeometry();
    place();
    dress();
    update();
    rule_->update();
}

void MomentChart::setSeries() {
    plot_->clearGraphs();
    graphs_.clear();
    QVector<double> times;
    times.reserve(static_cast<qsizetype>(shown_.dates.size()));
    for (const auto& date : shown_.dates) times.push_back(seconds(date));
    for (const auto& series : shown_.series) {
        auto* graph = plot_->addGraph();
        graph->setData(times, QVector<double>(series.values.begin(), series.values.end()));
        graphs_.push_back(graph);
    }
    plot_->xAxis->setRange(seconds(shown_.from), seconds(shown_.to));
    /// Leaves room for the whole width of the top and bottom lines.
    plot_->yAxis->setRange(-shown_.top / shown_.height, shown_.top * (1 + 1.0 / shown_.height));
}

QColor MomentChart::colour(HistorySeriesKind kind) const {
    const auto& tokens = look_.tokens();
    switch (kind) {
        case HistorySeriesKind::used:
            return tokens.used;
        case HistorySeriesKind::compressed:
            return tokens.compressed;
        case HistorySeriesKind::swap:
            return tokens.swap;
        case HistorySeriesKind::efficiency:
            return tokens.efficiency;
        case HistorySeriesKind::performance:
        case HistorySeriesKind::cpu:
            break;
    }
    return tokens.performance;
}

void MomentChart::dress() {
    applyTokens(*plot_, look_);
    auto lines = QSharedPointer<QCPAxisTickerText>::create();
    for (const auto& tick : shown_.ticks) lines->addTick(tick.value, {});
    plot_->yAxis->setTicker(lines);
    for (std::size_t number = 0; number < graphs_.size(); ++number) {
        const auto kind = shown_.series[number].kind;
        auto& graph = *graphs_[number];
        const double opacity = kind == HistorySeriesKind::used ? usedOpacity : loadOpacity;
        setArea(graph, colour(kind), opacity, look_.tokens());
        graph.setPen(penOf(colour(kind), kind));
        if (!isArea(kind)) graph.setBrush(Qt::NoBrush);
        if (kind == HistorySeriesKind::performance) graph.setChannelFillGraph(graphs_[number - 1]);
    }
    plot_->replot(QCustomPlot::rpQueuedReplot);
    rule_->update();
}

int MomentChart::legendWidth() const {
    const QFontMetrics metrics(look_.fonts().font(TextRole::caption));
    int width = 0;
    for (const auto& series : shown_.series) {
        width += markWidth(series.kind) + legendMarkGap + metrics.horizontalAdvance(qtText(series.name)) + legendGap;
    }
    return width;
}

bool MomentChart::legendBelow(int width) const {
    const QFontMetrics metrics(look_.fonts().font(TextRole::headline));
    return metrics.horizontalAdvance(qtText(shown_.title)) + legendGap + legendWidth() > width;
}

int MomentChart::plotTop(int width) const {
    int top = line(TextRole::headline);
    if (!shown_.note.empty()) {
        top += Paragraph(qtText(shown_.note), look_.fonts(), TextRole::small, std::max(1, width)).height();
    }
    if (legendBelow(width)) top += line(TextRole::caption) + Sizes::step;
    return top + std::max(plotGap, line(TextRole::caption) / 2);
}

int MomentChart::heightForWidth(int width) const {
    return plotTop(width) + shown_.height + timeGap + line(TextRole::caption);
}

QSize MomentChart::sizeHint() const {
    const int usual = std::max(width(), Sizes::inspectorMost);
    return {Sizes::inspectorMost, heightForWidth(usual)};
}

int MomentChart::axisWidth() const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::caption));
    int widest = metrics.horizontalAdvance(QStringLiteral("88 GB"));
    for (const auto& tick : shown_.ticks) widest = std::max(widest, metrics.horizontalAdvance(qtText(tick.label)));
    return widest + figureGap;
}

QRect MomentChart::plotRect() const {
    return {axisWidth(), plotTop(width()), std::max(1, width() - axisWidth() - dotRoom), std::max(1, shown_.height)};
}

void MomentChart::place() {
    plot_->setGeometry(plotRect());
    rule_->setGeometry(rect());
    rule_->raise();
}

void MomentChart::resizeEvent(QResizeEvent*) { place(); }

double MomentChart::xAt(Date date) const {
    const auto plot = plotRect();
    const double span = (shown_.to - shown_.from).count();
    return plot.left() + (span > 0 ? (date - shown_.from).count() / span : 0) * plot.width();
}

Date MomentChart::dateAt(double x) const {
    const auto plot = plotRect();
    const double part = plot.width() > 0 ? std::clamp((x - plot.left()) / plot.width(), 0.0, 1.0) : 0;
    return shown_.from + (shown_.to - shown_.from) * part;
}

void MomentChart::paintEvent(QPaintEvent*) {
    if (shown_.dates.empty()) return;
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    paintHead(painter);
    paintLegend(painter);
    paintBands(painter);
    painter.setPen(look_.tokens().text2);
    painter.setFont(look_.fonts().figures(TextRole::caption));
    paintFigures(painter);
    paintTimes(painter);
}

void MomentChart::paintHead(QPainter& painter) const {
    painter.setFont(look_.fonts().font(TextRole::headline));
    painter.setPen(look_.tokens().text);
    const auto alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(QRect(0, 0, width(), line(TextRole::headline)), static_cast<int>(alignment | Qt::AlignAbsolute),
                     qtText(shown_.title));
    if (shown_.note.empty()) return;
    const Paragraph note(qtText(shown_.note), look_.fonts(), TextRole::small, std::max(1, width()));
    note.draw(painter, QPoint(0, line(TextRole::headline)), look_.tokens().text2, alignment);
}

void MomentChart::paintLegend(QPainter& painter) const {
    painter.setFont(look_.fonts().font(TextRole::caption));
    const bool below = legendBelow(width());
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    int x = below || mirrored ? 0 : width() - legendWidth() + legendGap;
    const int top = below ? plotTop(width()) - std::max(plotGap, line(TextRole::caption) / 2) - line(TextRole::caption)
                          : (line(TextRole::headline) - line(TextRole::caption)) / 2;
    for (const auto& series : shown_.series) {
        const int middle = top + line(TextRole::caption) / 2;
        painter.setPen(penOf(colour(series.kind), series.kind));
        if (isArea(series.kind)) {
            const QRect mark(x, middle - legendSquare / 2, legendSquare, legendSquare);
            StyleControls::drawShape(painter, mark, 2, colour(series.kind), {});
        } else {
            painter.drawLine(x, middle, x + legendLine, middle);
        }
        x += markWidth(series.kind) + legendMarkGap;
        const auto name = qtText(series.name);
        painter.setPen(look_.tokens().text2);
        painter.drawText(QRect(x, top, width(), line(TextRole::caption)), Qt::AlignLeft | Qt::AlignVCenter, name);
        x += painter.fontMetrics().horizontalAdvance(name) + legendGap;
    }
}

/// Adjacent bands of one level are drawn as one rectangle to avoid seams.
void MomentChart::paintBands(QPainter& painter) const {
    const auto plot = plotRect();
    for (std::size_t first = 0; first < shown_.bands.size();) {
        const auto& band = shown_.bands[first];
        Date end = band.end;
        std::size_t next = first + 1;
        while (next < shown_.bands.size() && shown_.bands[next].pressure == band.pressure &&
               shown_.bands[next].start == end) {
            end = shown_.bands[next++].end;
        }
        const auto& tokens = look_.tokens();
        const auto ground = band.pressure == Pressure::critical ? tokens.bandCritical : tokens.bandElevated;
        const double left = std::max<double>(xAt(band.start), plot.left());
        const double right = std::min<double>(xAt(end), plot.left() + plot.width());
        if (right > left) {
            painter.fillRect(QRectF(left, plot.top(), right - left, plot.height()), faded(ground, bandOpacity));
        }
        first = next;
    }
}

void MomentChart::paintFigures(QPainter& painter) const {
    const auto plot = plotRect();
    const int height = line(TextRole::caption);
    for (const auto& tick : shown_.ticks) {
        const int y = plot.top() + plot.height() - 1 - static_cast<int>(tick.value / shown_.top * (plot.height() - 2));
        painter.drawText(QRect(0, y - height / 2, axisWidth() - figureGap, height), Qt::AlignRight | Qt::AlignVCenter,
                         qtText(tick.label));
    }
}

/// Draws as many time labels as fit, at equal distances; the outer ones stay within the plot.
void MomentChart::paintTimes(QPainter& painter) const {
    if (marks_.size() < 2) return;
    const auto plot = plotRect();
    int widest = 0;
    for (const auto& mark : marks_) {
        widest = std::max(widest, painter.fontMetrics().horizontalAdvance(qtText(mark.label)));
    }
    std::size_t every = 1;
    const auto distance = plot.width() / static_cast<int>(marks_.size() - 1);
    while (every < marks_.size() && static_cast<int>(every) * distance < widest + timeDistance) ++every;
    while ((marks_.size() - 1) % every != 0) ++every;
    const int top = plot.top() + plot.height() + timeGap;
    for (std::size_t number = 0; number < marks_.size(); number += every) {
        const int x = static_cast<int>(xAt(Date{Seconds{marks_[number].value}}));
        QRect room(x - widest / 2, top, widest, line(TextRole::caption));
        Qt::Alignment alignment = Qt::AlignHCenter;
        if (number == 0) {
            room.moveLeft(plot.left());
            alignment = Qt::AlignLeft;
        } else if (number + 1 == marks_.size()) {
            room.moveRight(plot.right());
            alignment = Qt::AlignRight;
        }
        painter.drawText(room, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextDontClip,
                         qtText(marks_[number].label));
    }
}

void MomentChart::paintRule(QPainter& painter) const {
    if (shown_.dates.empty()) return;
    const auto plot = plotRect();
    const auto& tokens = look_.tokens();
    const double x = std::clamp<double>(std::floor(xAt(shown_.focus)), plot.left(), plot.left() + plot.width() - 1);
    painter.fillRect(QRectF(x, plot.top(), 1, plot.height()), tokens.text);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& series : shown_.series) {
        const auto value = valueAt(shown_, series, shown_.focus);
        if (!value) continue;
        const double y = plot.top() + plot.height() - 1 - *value / shown_.top * (plot.height() - 2);
        painter.setPen(QPen(tokens.window, 1.5));
        painter.setBrush(colour(series.kind));
        painter.drawEllipse(QPointF(x + 0.5, y), dotSize / 2.0, dotSize / 2.0);
    }
    if (!hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange)) return;
    StyleControls::drawFocusRing(painter, rect().adjusted(4, 4, -4, -4), Sizes::rowRadius, tokens);
}

void MomentChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || shown_.dates.empty()) return;
    emit picked(dateAt(event->position().x()));
}

void MomentChart::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton) && !shown_.dates.empty()) emit picked(dateAt(event->position().x()));
}

void MomentChart::keyPressEvent(QKeyEvent* event) {
    const int all = static_cast<int>(shown_.dates.size());
    switch (event->key()) {
        case Qt::Key_Left:
            return emit stepped(-1);
        case Qt::Key_Right:
            return emit stepped(1);
        case Qt::Key_Home:
            return emit stepped(-all);
        case Qt::Key_End:
            return emit stepped(all);
        case Qt::Key_Escape:
            return emit cleared();
        default:
            QWidget::keyPressEvent(event);
    }
}

void MomentChart::focusInEvent(QFocusEvent*) { rule_->update(); }

void MomentChart::focusOutEvent(QFocusEvent*) { rule_->update(); }

}  // namespace tolvane::desktop
