#pragma once

#include <vector>

#include "app/screens/MemorySummary.h"
#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

/// Values with their names, one below the other: the name left, the value right, a remark behind it. What does not
/// fit beside its name goes to a line of its own.
class ValueRows : public RowList {
    Q_OBJECT

public:
    /// `spacing` between rows, in pixels.
    ValueRows(const Look& look, int spacing, QWidget* parent = nullptr);

    void show(std::vector<ValueRow> rows);
    using QWidget::show;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    std::vector<Row> layOut(int width) const override;

private:
    struct Lines;

    int lineHeight() const { return look().fonts().lineHeight(TextRole::small); }
    Lines linesOf(const ValueRow& row, int width) const;
    Row rowOf(const ValueRow& shown, int top, int width) const;

    int spacing_;
    std::vector<ValueRow> rows_;
};

}  // namespace tolvane::desktop
