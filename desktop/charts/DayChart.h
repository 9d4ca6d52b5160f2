#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "app/screens/stats/StatsView.h"
#include "desktop/look/Look.h"

class QCustomPlot;
class QCPBars;
class QCPItemText;

namespace tolvane::desktop {

/// One bar per day. A click or the arrow keys select a day, and the selected bar shows its sum. Not mirrored: time runs
/// to the right.
class DayChart : public QWidget {
    Q_OBJECT

public:
    explicit DayChart(const Look& look, QWidget* parent = nullptr);

    /// `title` is the accessible name.
    void show(const QString& title, const std::vector<StatsDay>& days, const std::vector<StatsTick>& ticks,
              std::optional<Date> selected);
    using QWidget::show;

    /// The area of a day's bar, over the full height of the plot.
    QRect slot(std::size_t day) const;
    QSize sizeHint() const override;

signals:
    void dayChosen(std::optional<tolvane::Date> day);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    void dress();
    void place();
    void setBars();
    QString daysWithFigures() const;
    std::optional<std::size_t> selectedDay() const;
    std::optional<std::size_t> dayAt(QPoint position) const;
    void choose(std::optional<std::size_t> day);
    int axisWidth() const;
    int lineHeight() const { return look_.fonts().lineHeight(TextRole::caption); }
    QRect plotRect() const;
    double slotWidth() const;
    void paintFigures(QPainter& painter) const;
    void paintDays(QPainter& painter) const;

    const Look& look_;
    QCustomPlot* plot_;
    QCPBars* others_;
    QCPBars* chosen_;
    QCPItemText* figure_;
    QString title_;
    std::vector<StatsDay> days_;
    std::vector<StatsTick> ticks_;
    std::optional<Date> selected_;
};

}  // namespace tolvane::desktop
