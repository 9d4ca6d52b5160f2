#pragma once

#include <QAccessibleWidget>
#include <vector>

namespace tolvane::desktop {

class RowList;

/// A RowList as screen readers see it: a list with an item for each row.
class RowListAccessible : public QAccessibleWidget {
public:
    /// Registers this interface for every RowList. Further calls change nothing.
    static void install();

    explicit RowListAccessible(RowList& list);
    ~RowListAccessible() override;
    RowListAccessible(const RowListAccessible&) = delete;
    RowListAccessible& operator=(const RowListAccessible&) = delete;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;

private:
    RowList& list_;
    /// Items handed out so far, by row. When a row goes, its item stays until the list goes, but is invalid.
    mutable std::vector<QAccessible::Id> items_;
};

}  // namespace tolvane::desktop
