#include "desktop/processes/RowMenu.h"

#include <QMenu>

#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"

namespace tolvane::desktop {

std::optional<ProcessAction> askMenu(const std::vector<ProcessMenuItem>& items, QPoint place, QWidget* parent) {
    if (items.empty()) return std::nullopt;
    QMenu menu(parent);
    for (const auto& item : items) {
        if (item.isDivider()) {
            menu.addSeparator();
        } else {
            auto* entry = menu.addAction(menuText(qtText(item.title)));
            entry->setData(static_cast<int>(*item.action));
            entry->setEnabled(item.enabled);
        }
    }
    const auto* chosen = menu.exec(place);
    if (!chosen) return std::nullopt;
    return static_cast<ProcessAction>(chosen->data().toInt());
}

}  // namespace tolvane::desktop
