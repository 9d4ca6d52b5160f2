#pragma once

#include <QWidget>

#include "app/screens/CPUSummary.h"
#include "desktop/charts/LoadChart.h"
#include "desktop/lists/ValueRows.h"
#include "desktop/look/Look.h"
#include "desktop/machine/Headline.h"
#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

/// CPU load of the machine: headline, chart of the last hour, values.
class CPUBlock : public QWidget {
    Q_OBJECT

public:
    explicit CPUBlock(const Look& look, QWidget* parent = nullptr);

    void show(const CPUSummary& summary);
    using QWidget::show;

private:
    CPUSummary shown_;
    Headline* headline_;
    QWidget* past_;
    LoadChart* chart_;
    ParagraphLabel* caption_;
    ValueRows* rows_;
};

}  // namespace tolvane::desktop
