#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tolvane::desktop {

/// Where the panel opens: centred on the tray icon, above or below it depending on the room, and within the available
/// area. If the host does not report the icon's place, the pointer is used, since it is on the icon.
QRect panelPlace(QSize panel, QRect icon, QPoint pointer, QRect available);

}  // namespace tolvane::desktop
