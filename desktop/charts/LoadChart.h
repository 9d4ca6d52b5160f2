#pragma once

#include <QWidget>
#include <vector>

#include "app/sampling/HistoryPoint.h"
#include "desktop/look/Look.h"

class QCustomPlot;

namespace tolvane::desktop {

/// The load of the last hour: performance cores stacked on efficiency cores. Not mirrored: time runs to the right.
class LoadChart : public QWidget {
    Q_OBJECT

public:
    explicit LoadChart(const Look& look, QWidget* parent = nullptr);

    void show(const std::vector<LoadPoint>& points);
    using QWidget::show;

private:
    void dress();

    const Look& look_;
    QCustomPlot* plot_;
};

}  // namespace tolvane::desktop
