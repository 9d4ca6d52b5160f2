#pragma once

#include <QAccessible>
#include <QWidget>

namespace tolvane::desktop {

/// Lets screen readers know what drawn widgets are. A plain widget that has a name is text when it stands alone and a
/// group when others stand in it; the toolkit would call both filler and pass over them. Once per application, after
/// it was made; a second time changes nothing.
void installAccessibleRoles();

/// Sets the role of a widget that is drawn as a whole and is no text. Hides the parts within it.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace tolvane::desktop
