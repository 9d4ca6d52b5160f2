#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

/// One row of a list in the panel.
struct PanelRow {
    /// The application whose icon starts the row; empty for a line icon.
    std::optional<std::string> appPath;
    QString title;
    /// Muted text below the title; empty for rows of one line.
    QString tag;
    /// The first column of values; may be empty.
    QString quietFigure;
    QString figure;

    bool operator==(const PanelRow&) const = default;
};

/// Rows with an icon, a title that is cut when space is short, and up to two columns of values.
class PanelRows : public RowList {
    Q_OBJECT

public:
    /// `columnWidth` is at 100 % text. Rows without an application show `icon`; `quietTip` explains the first value.
    PanelRows(const Look& look, int columnWidth, std::string_view icon, QString quietTip = {},
              QWidget* parent = nullptr);

    void show(std::vector<PanelRow> rows);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    std::vector<Row> layOut(int width) const override;

private:
    int rowHeight() const;
    int columnWidth() const;
    Row rowOf(const PanelRow& shown, QRect place) const;
    std::vector<Text> titlesOf(const PanelRow& shown, QRect room) const;

    int columnWidth_;
    std::string icon_;
    QString quietTip_;
    std::vector<PanelRow> rows_;
};

}  // namespace tolvane::desktop
