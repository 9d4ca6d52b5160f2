#pragma once

#include <QAccessible>
#include <QWidget>

namespace tolvane::desktop {

/// Gives screen readers roles for drawn widgets. A plain widget with a name is text if it has no children and a group
/// if it has; the toolkit would treat both as filler and skip them. Call once the application object exists; further
/// calls change nothing.
void installAccessibleRoles();

/// Sets the role of a widget that is drawn as a whole and is not text. Its children are hidden from screen readers.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace tolvane::desktop
