#pragma once

#include <QAbstractListModel>
#include <vector>

#include "app/screens/window/MainView.h"

namespace tolvane::desktop {

/// The sidebar's rows: a heading before each group, which cannot be selected.
class SidebarModel : public QAbstractListModel {
    Q_OBJECT

public:
    struct Row {
        /// Of a heading: its title; else the row's.
        QString title;
        std::string icon;
        QString badge;
        std::optional<AppSection> section;

        bool operator==(const Row&) const = default;
    };

    using QAbstractListModel::QAbstractListModel;

    void show(const std::vector<SidebarGroup>& groups);
    const Row& row(int number) const { return rows_[static_cast<std::size_t>(number)]; }
    QModelIndex find(AppSection section) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<Row> rows_;
};

}  // namespace tolvane::desktop
