#pragma once

#include <QWidget>
#include <vector>

#include "app/screens/stats/StatsView.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Rules one below the other, each with its name, a bar and its figure.
class RuleBars : public QWidget {
    Q_OBJECT

public:
    /// `colour` is that of the bars.
    RuleBars(const Look& look, QColor Tokens::* colour, QWidget* parent = nullptr);

    void show(std::vector<StatsBar> bars);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    int rowHeight() const;
    int nameWidth() const;
    int figureWidth() const;
    void paintBar(QPainter& painter, const StatsBar& bar, QRect row) const;

    const Look& look_;
    QColor Tokens::* colour_;
    std::vector<StatsBar> bars_;
};

}  // namespace tolvane::desktop
