#pragma once

#include <QCursor>
#include <QWidget>

namespace tolvane::desktop {

/// Ends the hover state of a widget that opened a menu: the menu grabs the pointer, so the widget gets no leave event.
inline void endHover(QWidget& widget) {
    if (widget.rect().contains(widget.mapFromGlobal(QCursor::pos()))) return;
    widget.setAttribute(Qt::WA_UnderMouse, false);
    widget.update();
}

}  // namespace tolvane::desktop
