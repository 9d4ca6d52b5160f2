#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "app/screens/window/MainView.h"
#include "desktop/lists/ListModel.h"

namespace tolvane::desktop {

/// One row of the sidebar: a section, or a group's heading, which has no section.
struct SidebarItem {
    QString title;
    std::string icon;
    QString badge;
    std::optional<AppSection> section;

    bool operator==(const SidebarItem&) const = default;
};

/// The sidebar's rows: a heading before each group, which cannot be selected.
class SidebarModel : public ListModel<SidebarItem, &SidebarItem::section> {
    Q_OBJECT

public:
    using ListModel::ListModel;

    void show(const std::vector<SidebarGroup>& groups);

    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    QVariant cell(const SidebarItem& row, int role) const override;
};

}  // namespace tolvane::desktop
