#pragma once

#include <QAbstractItemDelegate>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Draws the cells of the activity table. Acts have full contrast; what a log-only rule would have done is muted.
class ActivityDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    ActivityDelegate(const Look& look, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Shows a tooltip when the cell's text was cut.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Where the text of a column goes: text after a column of numbers keeps its distance from them.
    static QRect cellText(QRect cell, int column, Qt::LayoutDirection direction);

private:
    const QFont& font(int column) const;

    const Look& look_;
    QFont words_, figures_;
};

}  // namespace tolvane::desktop
