#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tolvane::desktop {

/// Where the panel opens: centred on the tray's icon, on the side of it where the screen has room, and never beyond
/// what the desktop leaves free. Where the host does not report the icon's place, the pointer stands in, which is on
/// the icon.
QRect panelPlace(QSize panel, QRect icon, QPoint pointer, QRect available);

}  // namespace tolvane::desktop
