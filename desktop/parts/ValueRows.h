#pragma once

#include <QWidget>
#include <vector>

#include "app/screens/MemorySummary.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Figures with their names, one below the other: the name left, the figure right, a remark behind it.
class ValueRows : public QWidget {
    Q_OBJECT

public:
    /// `spacing` between rows, in pixels.
    ValueRows(const Look& look, int spacing, QWidget* parent = nullptr);

    void show(std::vector<ValueRow> rows);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect rowRect(std::size_t row) const;
    void paintRow(QPainter& painter, const ValueRow& row, QRect rect) const;
    int paintMark(QPainter& painter, const ValueRow& row, QRect rect) const;
    QString tipAt(QPoint position) const;

    const Look& look_;
    int spacing_;
    std::vector<ValueRow> rows_;
};

}  // namespace tolvane::desktop
