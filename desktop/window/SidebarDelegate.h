#pragma once

#include <QAbstractItemDelegate>

#include "desktop/look/Look.h"
#include "desktop/window/SidebarModel.h"

namespace tolvane::desktop {

/// Draws the rows of the sidebar.
class SidebarDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    SidebarDelegate(const Look& look, const SidebarModel& model, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintHeading(QPainter& painter, const QStyleOptionViewItem& option, const SidebarItem& row) const;
    void paintSection(QPainter& painter, const QStyleOptionViewItem& option, const SidebarItem& row) const;
    int paintBadge(QPainter& painter, const QStyleOptionViewItem& option, QRect rect, const QString& badge) const;

    const Look& look_;
    const SidebarModel& model_;
};

}  // namespace tolvane::desktop
