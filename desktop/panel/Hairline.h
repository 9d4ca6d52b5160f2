#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A line between two blocks, with space above and below.
class Hairline : public QWidget {
    Q_OBJECT

public:
    /// `air` is the space on each side, in device-independent pixels.
    Hairline(const Look& look, int air, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    int air_;
};

}  // namespace tolvane::desktop
