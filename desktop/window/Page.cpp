#include "desktop/window/Page.h"

namespace tolvane::desktop {

void Page::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    redraw_.catchUp();
}

}  // namespace tolvane::desktop
