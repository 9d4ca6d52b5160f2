#include "desktop/machine/Gauge.h"

#include <QPainter>
#include <algorithm>

#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

Gauge::Gauge(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
    setFixedHeight(Sizes::gaugeHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Gauge::show(double fraction, QColor fill, QColor edge) {
    fraction_ = std::clamp(fraction, 0.0, 1.0);
    fill_ = fill;
    edge_ = edge;
    update();
}

void Gauge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    StyleControls::drawShape(painter, rect(), Sizes::gaugeRadius, look_.tokens().well, {});
    if (fraction_ <= 0) return;
    /// At least as wide as its two rounded ends.
    QRect filled(0, 0, std::max(Sizes::gaugeHeight, static_cast<int>(width() * fraction_)), height());
    if (layoutDirection() == Qt::RightToLeft) filled.moveRight(width() - 1);
    StyleControls::drawShape(painter, filled, Sizes::gaugeRadius, fill_, edge_);
}

}  // namespace tolvane::desktop
