#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "app/screens/history/HistoryChart.h"
#include "desktop/look/Look.h"

class QCustomPlot;
class QCPGraph;

namespace tolvane::desktop {

/// Values over time, with bands behind them where memory was tight and a rule at the selected moment. A click, a drag
/// or the arrow keys select another moment. Not mirrored: time runs to the right.
class MomentChart : public QWidget {
    Q_OBJECT

public:
    explicit MomentChart(const Look& look, QWidget* parent = nullptr);

    /// `marks` label the time axis. `moment` describes the selected moment for screen readers.
    void show(const HistoryChart& chart, const std::vector<HistoryTick>& marks, const QString& moment);
    using QWidget::show;

    const HistoryChart& shown() const { return shown_; }
    /// Conversion between a date and its x coordinate.
    double xAt(Date date) const;
    Date dateAt(double x) const;
    QRect plotRect() const;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

signals:
    void picked(tolvane::Date date);
    /// The user moved the selection by that many moments.
    void stepped(int places);
    /// The user went back to the latest moment.
    void cleared();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Rule;

    void dress();
    void place();
    void setSeries();
    QColor colour(HistorySeriesKind kind) const;
    int line(TextRole role) const { return look_.fonts().lineHeight(role); }
    int legendWidth() const;
    /// Whether the legend goes below the title because it does not fit beside it.
    bool legendBelow(int width) const;
    int plotTop(int width) const;
    int axisWidth() const;
    void paintHead(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;
    void paintBands(QPainter& painter) const;
    void paintFigures(QPainter& painter) const;
    void paintTimes(QPainter& painter) const;
    void paintRule(QPainter& painter) const;

    const Look& look_;
    QCustomPlot* plot_;
    Rule* rule_;
    HistoryChart shown_;
    std::vector<HistoryTick> marks_;
    std::vector<QCPGraph*> graphs_;
};

}  // namespace tolvane::desktop
