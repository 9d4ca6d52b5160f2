#pragma once

#include <vector>

#include "app/screens/MemorySummary.h"
#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

/// Labelled values from top to bottom: label left, value right, a remark after the value. What does not fit beside its
/// label goes to a line of its own.
class ValueRows : public RowList {
    Q_OBJECT

public:
    /// `spacing` is the distance between rows in pixels.
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
