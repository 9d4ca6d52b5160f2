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

/// An addition to a row's tooltip; may be empty.
using RowRemark = std::function<std::string(const TableRow&)>;

/// The part of a row's second text that is shown after its title.
struct RowDetail {
    /// Empty if there is no room for any of it.
    QString shown;
    bool isWhole = false;

    /// The whole text if it fits in `room` pixels; otherwise the last component of a path; otherwise nothing.
    static RowDetail fitting(const QString& detail, int room, const QFontMetrics& metrics);
};

/// Draws the cells of the processes table.
class ProcessTableDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    ProcessTableDelegate(const Look& look, const ProcessTableModel& model, QObject* parent);

    /// The column that the table is sorted by; its values are drawn in full contrast.
    void setSortedColumn(int column) { sortedColumn_ = column; }
    /// The remark is added to the tooltips of names.
    void setRemark(RowRemark remark) { remark_ = std::move(remark); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Shows the full text of a cut cell, and the remark.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

signals:
    /// A drawn value was too wide for its column.
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
