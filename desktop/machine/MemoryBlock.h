#pragma once

#include <QWidget>

#include "app/screens/MemorySummary.h"
#include "desktop/lists/ValueRows.h"
#include "desktop/look/Look.h"
#include "desktop/machine/Gauge.h"
#include "desktop/machine/Headline.h"

namespace tolvane::desktop {

/// Memory use of the machine: headline with the pressure, gauge, values.
class MemoryBlock : public QWidget {
    Q_OBJECT

public:
    explicit MemoryBlock(const Look& look, QWidget* parent = nullptr);

    void show(const MemorySummary& summary);
    using QWidget::show;

private:
    void dress();

    const Look& look_;
    MemorySummary shown_;
    Headline* headline_;
    Gauge* gauge_;
    ValueRows* rows_;
};

}  // namespace tolvane::desktop
