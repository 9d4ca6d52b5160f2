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

/// The processes table. What is selected and disclosed belongs to ids, and comes back with them.
class ProcessTable : public RowTree {
    Q_OBJECT

public:
    ProcessTable(const Look& look, ProcessTableModel::CellText cellText, QWidget* parent = nullptr);

    /// Shows the next reading; while the pointer or a menu is at work, waits for them to end.
    void show(std::vector<TableRow> lines);
    using RowTree::show;
    const ProcessTableModel& tableModel() const { return *model_; }

    /// The ids that are selected; some of them may have no row now.
    const std::set<std::string>& selectedIds() const { return selectedIds_; }
    void setSelectedIds(std::set<std::string> ids);

    /// The ids whose rows are open, those included that have no row now.
    const std::set<std::string>& disclosedIds() const { return expandedIds_; }
    /// For rows that are shown from now on.
    void setDisclosedIds(std::set<std::string> ids) { expandedIds_ = std::move(ids); }

    void setSorting(int column, bool ascending);
    /// What the tooltip of a name adds to it.
    void setRemark(RowRemark remark) { delegate_->setRemark(std::move(remark)); }

    /// Rows stay where they are until as many calls with false came as with true.
    void hold(bool held);

    /// Widths that the user chose, "Memory=80;% CPU=60"; what is not understood is passed over.
    QString columnWidths() const;
    void setColumnWidths(const QString& text);

signals:
    void selectedIdsChanged();
    /// The user clicked the head of a column that can sort.
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
    /// Columns that drew a value wider than their sample.
    std::map<int, int> grownWidths_;
};

}  // namespace tolvane::desktop
