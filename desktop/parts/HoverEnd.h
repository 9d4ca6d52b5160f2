#pragma once

#include <QCursor>
#include <QWidget>

namespace tolvane::desktop {

/// A menu takes the pointer along with it: what opened the menu never hears that the pointer has left.
inline void endHover(QWidget& widget) {
    if (widget.rect().contains(widget.mapFromGlobal(QCursor::pos()))) return;
    widget.setAttribute(Qt::WA_UnderMouse, false);
    widget.update();
}

}  // namespace tolvane::desktop
