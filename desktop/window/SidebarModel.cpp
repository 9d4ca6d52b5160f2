#include "desktop/window/SidebarModel.h"

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

void SidebarModel::show(const std::vector<SidebarGroup>& groups) {
    std::vector<SidebarItem> rows;
    for (const auto& group : groups) {
        rows.push_back({.title = qtText(group.title), .icon = {}, .badge = {}, .section = std::nullopt});
        for (const auto& row : group.rows)
            rows.push_back({qtText(row.title), row.icon, qtText(row.badge), row.section});
    }
    ListModel::show(std::move(rows));
}

QVariant SidebarModel::cell(const SidebarItem& row, int role) const {
    if (role == Qt::DisplayRole) return row.title;
    if (role != Qt::AccessibleTextRole) return {};
    return row.badge.isEmpty() ? row.title : row.title + QStringLiteral(", ") + row.badge;
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return row(index.row()).section ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace tolvane::desktop
