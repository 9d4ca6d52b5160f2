#include "desktop/panel/PanelPlace.h"

#include <algorithm>

namespace tolvane::desktop {

namespace {

constexpr int distance = 4;

}  // namespace

QRect panelPlace(QSize panel, QRect icon, QPoint pointer, QRect available) {
    const QRect anchor = icon.isValid() ? icon : QRect(pointer, QSize(1, 1));
    const bool isAbove = anchor.center().y() < available.center().y();
    const int top = isAbove ? anchor.bottom() + 1 + distance : anchor.top() - distance - panel.height();
    const int left = anchor.center().x() - panel.width() / 2;
    const int lastLeft = available.right() + 1 - panel.width() - distance;
    const int lastTop = available.bottom() + 1 - panel.height() - distance;
    return {QPoint(std::max(available.left() + distance, std::min(left, lastLeft)),
                   std::max(available.top() + distance, std::min(top, lastTop))),
            panel};
}

}  // namespace tolvane::desktop
