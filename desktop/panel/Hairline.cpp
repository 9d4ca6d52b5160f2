#include "desktop/panel/Hairline.h"

#include <QPainter>

namespace tolvane::desktop {

Hairline::Hairline(const Look& look, int air, QWidget* parent) : QWidget(parent), look_(look), air_(air) {
    setFixedHeight(2 * air + 1);
}

void Hairline::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(0, air_, width(), 1, look_.tokens().hairline);
}

}  // namespace tolvane::desktop
