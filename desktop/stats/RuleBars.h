#pragma once

#include <vector>

#include "app/screens/stats/StatsView.h"
#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

/// A list of rules, each with its name, a bar and its value.
class RuleBars : public RowList {
    Q_OBJECT

public:
    /// `colour` is the colour of the bars.
    RuleBars(const Look& look, QColor Tokens::* colour, QWidget* parent = nullptr);

    void show(std::vector<StatsBar> bars);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    std::vector<Row> layOut(int width) const override;

private:
    int rowHeight() const;
    int nameWidth(int width) const;
    int valueWidth() const;
    Row rowOf(const StatsBar& bar, QRect place) const;

    QColor Tokens::* colour_;
    std::vector<StatsBar> bars_;
};

}  // namespace tolvane::desktop
