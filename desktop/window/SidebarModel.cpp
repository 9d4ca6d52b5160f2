#include "desktop/window/SidebarModel.h"

#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

std::vector<SidebarModel::Row> flat(const std::vector<SidebarGroup>& groups) {
    std::vector<SidebarModel::Row> rows;
    for (const auto& group : groups) {
        rows.push_back({.title = qtText(group.title), .icon = {}, .badge = {}, .section = std::nullopt});
        for (const auto& row : group.rows)
            rows.push_back({qtText(row.title), row.icon, qtText(row.badge), row.section});
    }
    return rows;
}

}  // namespace

/// Sections come and go only with the program's own screens, so a change of their number may start anew.
void SidebarModel::show(const std::vector<SidebarGroup>& groups) {
    auto rows = flat(groups);
    if (rows == rows_) return;
    const bool sameRows = rows.size() == rows_.size();
    if (!sameRows) beginResetModel();
    rows_ = std::move(rows);
    if (!sameRows) {
        endResetModel();
    } else {
        emit dataChanged(index(0), index(rowCount() - 1));
    }
}

QModelIndex SidebarModel::find(AppSection section) const {
    const auto found = std::ranges::find(rows_, section, &Row::section);
    return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
}

int SidebarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto& shown = row(index.row());
    if (role == Qt::DisplayRole) return shown.title;
    if (role != Qt::AccessibleTextRole) return {};
    return shown.badge.isEmpty() ? shown.title : shown.title + QStringLiteral(", ") + shown.badge;
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return row(index.row()).section ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace tolvane::desktop
