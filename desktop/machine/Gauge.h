#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A fill level as a thin bar in a track. The widgets around it show the text; its own is for screen readers only.
class Gauge : public QWidget {
    Q_OBJECT

public:
    explicit Gauge(const Look& look, QWidget* parent = nullptr);

    /// `fraction` is from 0 to 1; `edge` outlines fills that would be hard to see on the track, and may be invalid.
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
