#pragma once

#include <qcustomplot.h>

namespace tolvane::desktop {

/// Bars with rounded tops.
class RoundedBars : public QCPBars {
public:
    RoundedBars(QCPAxis* keys, QCPAxis* values, double radius) : QCPBars(keys, values), radius_(radius) {}

protected:
    void draw(QCPPainter* painter) override {
        const auto range = mKeyAxis->range();
        painter->setPen(Qt::NoPen);
        painter->setBrush(mBrush);
        applyDefaultAntialiasingHint(painter);
        for (auto bar = mDataContainer->findBegin(range.lower); bar != mDataContainer->findEnd(range.upper); ++bar) {
            if (bar->value > 0) drawBar(*painter, getBarRect(bar->key, bar->value));
        }
    }

private:
    /// The lower end reaches below the plot, where clipping makes it square.
    void drawBar(QCPPainter& painter, QRectF bar) const {
        const double radius = std::min(radius_, std::min(bar.width() / 2, bar.height()));
        painter.drawRoundedRect(bar.normalized().adjusted(0, 0, 0, radius), radius, radius);
    }

    double radius_;
};

}  // namespace tolvane::desktop
