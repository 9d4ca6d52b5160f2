#pragma once

#include <QAccessibleWidget>
#include <vector>

namespace tolvane::desktop {

class RowList;

/// A RowList for screen readers: a list with an item for each row.
class RowListAccessible : public QAccessibleWidget {
public:
    /// Lets the toolkit make these for every RowList. Calls after the first change nothing.
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
    /// Items that were asked for, by row. One whose row is gone stays, invalid, until the list goes.
    mutable std::vector<QAccessible::Id> items_;
};

}  // namespace tolvane::desktop
