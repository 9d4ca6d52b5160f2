#pragma once

#include <QString>

namespace tolvane::desktop {

/// A text as the label of a menu entry or button: shortened, on one line, with ampersands escaped. In a right-to-left
/// window "Force Quit…" keeps its ellipsis at the end.
QString menuText(const QString& text);

/// The same text direction for a label that needs no shortening or escaping.
QString asItReads(const QString& text);

}  // namespace tolvane::desktop
