#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>
#include <map>

#include "desktop/ActivityModel.h"
#include "desktop/look/Look.h"

class QHeaderView;

namespace tolvane::desktop {

/// The log as a table. Only rows in sight are laid out, drawn and put into words.
class ActivityTable : public QTreeView {
    Q_OBJECT

public:
    /// Both outlive the table.
    ActivityTable(const Look& look, const ActivityView& view, QWidget* parent = nullptr);

    ActivityModel& activityModel() const { return *model_; }
    /// Widths that the user gave to columns, as text to remember.
    QString columnWidths() const;
    void setColumnWidths(const QString& text);

signals:
    void columnWidthsChanged();

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildHeader();
    void fitColumns();
    int usualWidth(int column) const;
    QRect rowRect(const QModelIndex& index) const;
    void setHovered(const QModelIndex& row);
    void copySelected() const;

    const Look& look_;
    const ActivityView& view_;
    ActivityModel* model_;
    QHeaderView* header_;
    QPersistentModelIndex hovered_;
    /// By column.
    std::map<int, int> chosenWidths_;
    bool fitting_ = false;
};

}  // namespace tolvane::desktop
