#pragma once

#include <QAbstractItemDelegate>
#include <QString>
#include <functional>
#include <string>
#include <utility>

#include "app/rows/TableRow.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

class ProcessTableModel;

/// What the tooltip adds about a row; empty for nothing.
using RowRemark = std::function<std::string(const TableRow&)>;

/// How much of a line's second text stands behind its title.
struct RowDetail {
    /// Empty when there is no room for any of it.
    QString shown;
    bool isWhole = false;

    /// Whole if it fits in `room` pixels; a path else by its last part; else nothing.
    static RowDetail fitting(const QString& detail, int room, const QFontMetrics& metrics);
};

/// Draws the cells of the processes table.
class ProcessTableDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    ProcessTableDelegate(const Look& look, const ProcessTableModel& model, QObject* parent);

    /// The column that the table is ordered by; its values are drawn in full contrast.
    void setSortedColumn(int column) { sortedColumn_ = column; }
    /// Part of the names' tooltips.
    void setRemark(RowRemark remark) { remark_ = std::move(remark); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The tooltip shows what the cell had no room for, and the remark.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

signals:
    /// A value was drawn that is too wide for its column.
    void tooNarrow(int column, int width) const;

private:
    struct NameParts;

    NameParts nameParts(const TableRow& line, QRect cell) const;
    void paintName(QPainter& painter, const QStyleOptionViewItem& option, const TableRow& line) const;
    void paintFigure(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const Look& look_;
    const ProcessTableModel& model_;
    RowRemark remark_;
    int sortedColumn_ = -1;
    QFont titleFont_, detailFont_, figureFont_;
};

}  // namespace tolvane::desktop
