#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A table or tree that draws each row as a whole: the selection, the hover background and the focus ring span its full
/// width.
class RowTree : public QTreeView {
    Q_OBJECT

public:
    /// `look` outlives it.
    explicit RowTree(const Look& look, QWidget* parent = nullptr);

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool viewportEvent(QEvent* event) override;
    /// Ctrl+C copies the selection; Escape clears it.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void copySelected() const;
    void tellScreenReaders();
    void setHovered(const QModelIndex& row);
    QRect rowRect(const QModelIndex& index) const;

    const Look& look_;
    QPersistentModelIndex hovered_;
};

}  // namespace tolvane::desktop
