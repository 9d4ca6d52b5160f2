#pragma once

#include <QPersistentModelIndex>
#include <map>

#include "desktop/activity/ActivityModel.h"
#include "desktop/lists/RowTree.h"
#include "desktop/look/Look.h"

class QHeaderView;

namespace tolvane::desktop {

/// The log as a table. Only visible rows are laid out, formatted and drawn.
class ActivityTable : public RowTree {
    Q_OBJECT

public:
    /// Both outlive the table.
    ActivityTable(const Look& look, const ActivityView& view, QWidget* parent = nullptr);

    ActivityModel& activityModel() const { return *model_; }
    /// The column widths that the user chose, as text for WindowState.
    QString columnWidths() const;
    void setColumnWidths(const QString& text);

signals:
    void columnWidthsChanged();

protected:
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildHeader();
    void fitColumns();
    int usualWidth(int column) const;

    const Look& look_;
    const ActivityView& view_;
    ActivityModel* model_;
    QHeaderView* header_;
    /// Keyed by column.
    std::map<int, int> chosenWidths_;
    bool fitting_ = false;
};

}  // namespace tolvane::desktop
