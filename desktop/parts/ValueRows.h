#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "app/screens/MemorySummary.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Figures with their names, one below the other: the name left, the figure right, a remark behind it. What does not
/// fit beside its name goes to a line of its own.
class ValueRows : public QWidget {
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
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Parts;

    Parts parts(const ValueRow& row, int width) const;
    int lineHeight() const { return look_.fonts().lineHeight(TextRole::small); }
    void paintRow(QPainter& painter, const ValueRow& row, const Parts& shown, int top) const;
    QString tipAt(QPoint position) const;

    const Look& look_;
    int spacing_;
    std::vector<ValueRow> rows_;
    /// The height at the width that was asked for last.
    mutable std::optional<int> measuredWidth_;
    mutable int measuredHeight_ = 0;
};

}  // namespace tolvane::desktop
