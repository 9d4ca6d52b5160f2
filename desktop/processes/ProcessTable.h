#pragma once

#include <QPersistentModelIndex>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "desktop/lists/RowTree.h"
#include "desktop/look/Look.h"
#include "desktop/processes/ProcessTableDelegate.h"
#include "desktop/processes/ProcessTableHeader.h"
#include "desktop/processes/ProcessTableModel.h"

namespace tolvane::desktop {

/// The processes table. Selection and disclosure belong to row ids, and return when their rows do.
class ProcessTable : public RowTree {
    Q_OBJECT

public:
    ProcessTable(const Look& look, ProcessTableModel::CellText cellText, QWidget* parent = nullptr);

    /// Shows the next reading, or keeps it until the mouse button is released and the menu is closed.
    void show(std::vector<TableRow> lines);
    using RowTree::show;
    const ProcessTableModel& tableModel() const { return *model_; }

    /// May include ids that have no row now.
    const std::set<std::string>& selectedIds() const { return selectedIds_; }
    void setSelectedIds(std::set<std::string> ids);

    /// Ids of the open rows, including those that have no row now.
    const std::set<std::string>& disclosedIds() const { return expandedIds_; }
    /// Applies to rows that are shown from now on.
    void setDisclosedIds(std::set<std::string> ids) { expandedIds_ = std::move(ids); }

    void setSorting(int column, bool ascending);
    /// The remark is added to the tooltips of names.
    void setRemark(RowRemark remark) { delegate_->setRemark(std::move(remark)); }

    /// Holds the rows in place; each true needs a matching false.
    void hold(bool held);

    /// The column widths that the user chose, "Memory=80;% CPU=60"; entries that cannot be read are skipped.
    QString columnWidths() const;
    void setColumnWidths(const QString& text);

signals:
    void selectedIdsChanged();
    /// The user clicked the head of a sortable column.
    void headClicked(int column);
    void columnWidthsChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void buildHeader();
    void take(std::vector<TableRow> lines);
    void restoreDisclosure(const QModelIndex& parent, int first, int last);
    void restoreSelection();
    void selectionByUser();
    int leastWidth(int column) const;
    void fitColumns();

    const Look& look_;
    ProcessTableModel* model_;
    ProcessTableDelegate* delegate_;
    ProcessTableHeader* header_;
    std::set<std::string> selectedIds_;
    std::set<std::string> expandedIds_;
    std::optional<std::vector<TableRow>> waiting_;
    int holds_ = 0;
    bool taking_ = false;
    bool pressed_ = false;
    int sortedColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::DescendingOrder;
    std::map<int, int> chosenWidths_;
    /// Columns in which a value was wider than the sample they are sized for.
    std::map<int, int> grownWidths_;
};

}  // namespace tolvane::desktop
