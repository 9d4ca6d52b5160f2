#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One row of a list in the panel.
struct PanelRow {
    /// Of an application; none for what has a line icon.
    std::optional<std::string> appPath;
    QString title;
    /// Quiet, below the title; empty for rows of one line.
    QString tag;
    /// In the first column of figures; may be empty.
    QString quietFigure;
    QString figure;

    bool operator==(const PanelRow&) const = default;
};

/// Rows with an icon, a title that gives way, and up to two columns of figures.
class PanelRows : public QWidget {
    Q_OBJECT

public:
    /// `columnWidth` at 100 % text. `icon` is that of rows without an application, `quietTip` what the first figure is.
    PanelRows(const Look& look, int columnWidth, std::string_view icon, QString quietTip = {},
              QWidget* parent = nullptr);

    void show(std::vector<PanelRow> rows);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool hasTags() const;
    int rowHeight() const;
    int columnWidth() const;
    QRect titleRect(const PanelRow& row, QRect rect) const;
    QRect quietRect(QRect rect) const;
    void paintIcon(QPainter& painter, const PanelRow& row, QRect rect) const;
    void paintRow(QPainter& painter, const PanelRow& row, QRect rect) const;
    QString tipAt(QPoint position) const;

    const Look& look_;
    int columnWidth_;
    std::string icon_;
    QString quietTip_;
    std::vector<PanelRow> rows_;
};

}  // namespace tolvane::desktop
