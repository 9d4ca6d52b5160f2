#include "desktop/LineMenu.h"

#include "desktop/Words.h"

namespace tolvane::desktop {

std::vector<ProcessMenuItem> offeredItems(const std::vector<ProcessMenuItem>& items,
                                          const std::set<ProcessAction>& offered) {
    std::vector<ProcessMenuItem> kept;
    bool divider = false;
    for (const auto& item : items) {
        if (item.isDivider()) {
            divider = !kept.empty();
        } else if (offered.contains(*item.action)) {
            if (divider) kept.push_back({});
            divider = false;
            kept.push_back(item);
        }
    }
    return kept;
}

std::optional<ProcessAction> askMenu(const Look& look, const std::vector<ProcessMenuItem>& items, QPoint place,
                                     QWidget* parent) {
    if (items.empty()) return std::nullopt;
    QMenu menu(parent);
    menu.setStyleSheet(look.menuSheet());
    menu.setFont(look.fonts().font(TextRole::body));
    for (const auto& item : items) {
        if (item.isDivider()) {
            menu.addSeparator();
        } else {
            /// A name may hold what would be an accelerator.
            menu.addAction(words(item.title).replace('&', QStringLiteral("&&")))
                ->setData(static_cast<int>(*item.action));
        }
    }
    const auto* chosen = menu.exec(place);
    if (!chosen) return std::nullopt;
    return static_cast<ProcessAction>(chosen->data().toInt());
}

}  // namespace tolvane::desktop
