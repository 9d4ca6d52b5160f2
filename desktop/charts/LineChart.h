#pragma once

#include <QWidget>
#include <string>

#include "app/screens/processes/InspectorContent.h"
#include "desktop/look/Look.h"

class QCustomPlot;

namespace tolvane::desktop {

/// A small chart of values over time: the first series as an area, the others as lines, with round values at the right
/// edge, times below, and a legend if there are several series. Not mirrored: time runs to the right.
class LineChart : public QWidget {
    Q_OBJECT

public:
    /// `plotHeight` is in pixels, without the labels and legend below the plot.
    LineChart(const Look& look, std::string locale, int plotHeight, QWidget* parent = nullptr);

    void show(const InspectorChart& chart);
    using QWidget::show;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void dress();
    void place();
    int labelWidth() const;
    int captionHeight() const;
    bool hasLegend() const { return shown_.series.size() > 1; }
    QColor colour(std::size_t series) const;
    QString figure(double value) const;
    QString latestFigures() const;
    QRect plotRect() const;
    void paintFigures(QPainter& painter) const;
    void paintTimes(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;

    const Look& look_;
    std::string locale_;
    int plotHeight_;
    InspectorChart shown_;
    double top_ = 1;
    QCustomPlot* plot_;
};

}  // namespace tolvane::desktop
