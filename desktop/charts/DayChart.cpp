#include "desktop/charts/DayChart.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/charts/ChartTokens.h"
#include "desktop/charts/RoundedBars.h"
#include "desktop/look/AccessibleRoles.h"
#include "desktop/look/Palette.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int plotHeight = 96;
constexpr int figureGap = 8;
constexpr int labelGap = 5;
/// Bar width as a share of a day's width.
constexpr double barShare = 0.33, closeShare = 0.6;
/// From this many days on, bars stand closer together.
constexpr std::size_t manyDays = 15;
constexpr int labelDistance = 14;
/// Opacity of days that are not selected.
constexpr double quietShare = 0.7;

}  // namespace

DayChart::DayChart(const Look& look, QWidget* parent) : QWidget(parent), look_(look), plot_(new QCustomPlot(this)) {
    setAccessibleRole(*this, QAccessible::Chart);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    plot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    makeQuiet(*plot_);
    plot_->xAxis->setVisible(false);
    plot_->yAxis->setTickLabels(false);
    others_ = new RoundedBars(plot_->xAxis, plot_->yAxis, Sizes::gaugeRadius);
    chosen_ = new RoundedBars(plot_->xAxis, plot_->yAxis, Sizes::gaugeRadius);
    figure_ = new QCPItemText(plot_);
    figure_->setClipToAxisRect(false);
    figure_->setPositionAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    figure_->setPadding(QMargins(2, 0, 2, 1));
    plot_->axisRect()->setMargins(QMargins(0, lineHeight(), 0, 0));
    connect(&look, &Look::changed, this, [this] { dress(); });
}

void DayChart::show(const QString& title, const std::vector<StatsDay>& days, const std::vector<StatsTick>& ticks,
                    std::optional<Date> selected) {
    title_ = title;
    days_ = days;
    ticks_ = ticks;
    selected_ = selected;
    const auto chosen = selectedDay();
    setAccessibleName(chosen ? title_ + QStringLiteral(", ") + qtText(days_[*chosen].spoken) : title_);
    setAccessibleDescription(daysWithFigures());
    setBars();
    dress();
    place();
    update();
}

/// The bars as text for screen readers.
QString DayChart::daysWithFigures() const {
    QStringList parts;
    for (const auto& each : days_) {
        if (each.memory > 0) parts << qtText(each.spoken);
    }
    parts.prepend(qtText(StatsView::dayAxis) + QStringLiteral(", ") + qtText(StatsView::freedAxis));
    return parts.join(QStringLiteral("; "));
}

std::optional<std::size_t> DayChart::selectedDay() const {
    if (!selected_) return std::nullopt;
    const auto found = std::ranges::find(days_, *selected_, &StatsDay::day);
    if (found == days_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - days_.begin());
}

void DayChart::setBars() {
    QVector<double> keys, values;
    const auto chosen = selectedDay();
    chosen_->data()->clear();
    for (std::size_t day = 0; day < days_.size(); ++day) {
        const auto key = static_cast<double>(day);
        const auto value = static_cast<double>(days_[day].memory);
        if (chosen == day) {
            chosen_->addData(key, value);
        } else {
            keys.push_back(key);
            values.push_back(value);
        }
    }
    others_->setData(keys, values, true);
    const double share = days_.size() < manyDays ? barShare : closeShare;
    others_->setWidth(share);
    chosen_->setWidth(share);
    plot_->xAxis->setRange(-0.5, static_cast<double>(days_.size()) - 0.5);
    const double top = ticks_.empty() ? 1 : ticks_.back().value;
    /// Leaves room for the whole width of the top and bottom lines.
    plot_->yAxis->setRange(-top / plotHeight, top * (1 + 1.0 / plotHeight));
    figure_->setVisible(chosen.has_value());
    if (!chosen) return;
    const auto& day = days_[*chosen];
    figure_->setText(qtText(day.figure));
    figure_->position->setCoords(static_cast<double>(*chosen), static_cast<double>(day.memory));
}

void DayChart::dress() {
    applyTokens(*plot_, look_);
    const auto& tokens = look_.tokens();
    auto marks = QSharedPointer<QCPAxisTickerText>::create();
    for (const auto& tick : ticks_) marks->addTick(tick.value, {});
    plot_->yAxis->setTicker(marks);
    others_->setBrush(laidOver(tokens.window, tokens.used, quietShare));
    chosen_->setBrush(tokens.used);
    figure_->setFont(look_.fonts().figures(TextRole::caption, QFont::DemiBold));
    figure_->setColor(tokens.text);
    /// The label's background hides the grid lines behind it, except on an empty day, where it would hide the base
    /// line.
    const auto chosen = selectedDay();
    figure_->setBrush(chosen && days_[*chosen].memory > 0 ? QBrush(tokens.window) : QBrush(Qt::NoBrush));
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

int DayChart::axisWidth() const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::caption));
    int width = 0;
    for (const auto& tick : ticks_) width = std::max(width, metrics.horizontalAdvance(qtText(tick.label)));
    return width + figureGap;
}

/// The line of text above the plot is for the selected day's value.
QRect DayChart::plotRect() const { return {axisWidth(), lineHeight(), width() - axisWidth(), plotHeight}; }

QSize DayChart::sizeHint() const { return {Sizes::inspectorMost, 2 * lineHeight() + plotHeight + labelGap}; }

void DayChart::place() { plot_->setGeometry(plotRect().adjusted(0, -lineHeight(), 0, 0)); }

void DayChart::resizeEvent(QResizeEvent*) { place(); }

double DayChart::slotWidth() const {
    return days_.empty() ? 0 : plotRect().width() / static_cast<double>(days_.size());
}

QRect DayChart::slot(std::size_t day) const {
    const auto plot = plotRect();
    const double left = plot.left() + slotWidth() * static_cast<double>(day);
    return QRectF(left, plot.top(), slotWidth(), plot.height()).toAlignedRect();
}

void DayChart::paintEvent(QPaintEvent*) {
    if (days_.empty()) return;
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setPen(look_.tokens().text2);
    painter.setFont(look_.fonts().figures(TextRole::caption));
    paintFigures(painter);
    paintDays(painter);
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        StyleControls::drawFocusRing(painter, rect().adjusted(4, 4, -4, -4), Sizes::rowRadius, look_.tokens());
    }
}

void DayChart::paintFigures(QPainter& painter) const {
    const auto plot = plotRect();
    const double top = ticks_.back().value;
    for (const auto& tick : ticks_) {
        const int y = plot.bottom() - 1 - static_cast<int>(tick.value / top * (plot.height() - 2));
        painter.drawText(QRect(0, y - lineHeight() / 2, axisWidth() - figureGap, lineHeight()),
                         Qt::AlignRight | Qt::AlignVCenter, qtText(tick.label));
    }
}

/// Labels as many days as fit, counted back from today; the selected day always has its label.
void DayChart::paintDays(QPainter& painter) const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::caption, QFont::DemiBold));
    int widest = 0;
    for (const auto& day : days_) widest = std::max(widest, metrics.horizontalAdvance(qtText(day.label)));
    const auto every = std::max<std::size_t>(
        1, static_cast<std::size_t>(std::ceil((widest + labelDistance) / std::max(slotWidth(), 0.01))));
    const auto selected = selectedDay();
    const int top = plotRect().bottom() + 1 + labelGap;
    for (std::size_t day = 0; day < days_.size(); ++day) {
        const bool isSelected = day == selected;
        const bool named = (days_.size() - 1 - day) % every == 0;
        const bool nearSelected =
            selected && !isSelected && (day > *selected ? day - *selected : *selected - day) < every;
        if (!isSelected && (!named || nearSelected)) continue;
        const auto place = slot(day);
        QRect room(place.center().x() - widest / 2 - 1, top, widest + 2, lineHeight());
        if (room.right() > width()) room.moveRight(width() - 1);
        painter.setFont(look_.fonts().figures(TextRole::caption, isSelected ? QFont::DemiBold : QFont::Normal));
        painter.setPen(isSelected ? look_.tokens().text : look_.tokens().text2);
        painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, qtText(days_[day].label));
    }
}

std::optional<std::size_t> DayChart::dayAt(QPoint position) const {
    const auto plot = plotRect();
    if (days_.empty() || position.x() < plot.left() || position.x() >= plot.left() + plot.width()) return std::nullopt;
    const auto day = static_cast<std::size_t>((position.x() - plot.left()) / slotWidth());
    return std::min(day, days_.size() - 1);
}

void DayChart::choose(std::optional<std::size_t> day) {
    emit dayChosen(day ? std::optional(days_[*day].day) : std::nullopt);
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

void DayChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    if (const auto day = dayAt(event->position().toPoint())) choose(day);
}

void DayChart::keyPressEvent(QKeyEvent* event) {
    if (days_.empty()) return QWidget::keyPressEvent(event);
    const auto last = days_.size() - 1;
    const auto now = selectedDay();
    switch (event->key()) {
        case Qt::Key_Left:
            return choose(now ? *now - std::min<std::size_t>(*now, 1) : last);
        case Qt::Key_Right:
            return choose(now ? std::min(*now + 1, last) : last);
        case Qt::Key_Home:
            return choose(0);
        case Qt::Key_End:
            return choose(last);
        case Qt::Key_Escape:
            if (now) return choose(std::nullopt);
            break;
        default:
            break;
    }
    QWidget::keyPressEvent(event);
}

void DayChart::focusInEvent(QFocusEvent*) { update(); }

void DayChart::focusOutEvent(QFocusEvent*) { update(); }

bool DayChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto day = dayAt(help->pos());
    showTip(help->globalPos(), day ? qtText(days_[*day].spoken) : QString(), this);
    return true;
}

}  // namespace tolvane::desktop
