#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace tolvane::desktop {

/// Tooltip text for a string that may contain anything: shown literally, never as markup, wrapped to lines that fit on
/// a screen, and cut only if it would not fit on one.
QString tip(const QString& text);

/// Shows the tooltip, or hides it if `text` is empty.
void showTip(QPoint global, const QString& text, QWidget* widget);

}  // namespace tolvane::desktop
