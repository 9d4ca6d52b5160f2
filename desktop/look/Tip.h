#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace tolvane::desktop {

/// What a tooltip shows of a text that may hold anything: as it stands, never as markup, broken into lines that fit on
/// a screen, and cut only where a screen would be too small for it.
QString tip(const QString& text);

/// Shows it; hides the tooltip for an empty text.
void showTip(QPoint global, const QString& text, QWidget* widget);

}  // namespace tolvane::desktop
