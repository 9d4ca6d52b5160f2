#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// How full something is: a thin bar in a track. The words stand elsewhere; it has them for screen readers only.
class Gauge : public QWidget {
    Q_OBJECT

public:
    explicit Gauge(const Look& look, QWidget* parent = nullptr);

    /// `fraction` from 0 to 1; `edge` is for fills that the ground would swallow, invalid for none.
    void show(double fraction, QColor fill, QColor edge);
    double fraction() const { return fraction_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    double fraction_ = 0;
    QColor fill_, edge_;
};

}  // namespace tolvane::desktop
