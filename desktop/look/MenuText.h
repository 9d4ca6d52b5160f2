#pragma once

#include <QString>

namespace tolvane::desktop {

/// A text as the label of a menu's entry or of a button: a name in it may be of any length and hold what would be a
/// mnemonic, and "Force Quit…" keeps its dots behind it in a window that runs from right to left.
QString menuText(const QString& text);

/// The same for a label that is known to be short.
QString asItReads(const QString& text);

}  // namespace tolvane::desktop
