#include "desktop/parts/IconButton.h"

namespace tolvane::desktop {

IconButton::IconButton(const Look& look, std::string_view icon, const QString& name, QWidget* parent)
    : QToolButton(parent) {
    setIcon(look.icons().get(icon));
    setIconSize(QSize(look.fonts().scaled(Sizes::icon), look.fonts().scaled(Sizes::icon)));
    setToolTip(name);
    setAccessibleName(name);
    setFocusPolicy(Qt::TabFocus);
    const int side = look.fonts().height(TextRole::body, Sizes::buttonHeight);
    setFixedSize(side, side);
}

}  // namespace tolvane::desktop
