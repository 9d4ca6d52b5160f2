#include "desktop/lists/RowTree.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

RowTree::RowTree(const Look& look, QWidget* parent) : QTreeView(parent), look_(look) {
    connect(this, &QTreeView::expanded, this, &RowTree::tellScreenReaders);
    connect(this, &QTreeView::collapsed, this, &RowTree::tellScreenReaders);
}

/// Newer toolkits cache accessible cells by number and would keep reporting rows that have been collapsed.
void RowTree::tellScreenReaders() {
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent event(this, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

QRect RowTree::rowRect(const QModelIndex& index) const {
    auto rect = visualRect(index.siblingAtColumn(0));
    rect.setLeft(Sizes::rowInset);
    rect.setRight(viewport()->width() - 1 - Sizes::rowInset - Sizes::scrollThumb / 2);
    return QStyle::visualRect(layoutDirection(), viewport()->rect(), rect);
}

void RowTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    auto row = option;
    row.rect = rowRect(index);
    row.viewItemPosition = QStyleOptionViewItem::OnlyOne;
    row.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    row.state.setFlag(QStyle::State_MouseOver, hovered_ == index.siblingAtColumn(0));
    row.state.setFlag(QStyle::State_Active, isActiveWindow());
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &row, painter, this);
    QTreeView::drawRow(painter, option, index);
    if (!hasFocus() || currentIndex().siblingAtColumn(0) != index.siblingAtColumn(0)) return;
    row.state.setFlag(QStyle::State_KeyboardFocusChange, window()->testAttribute(Qt::WA_KeyboardFocusChange));
    StyleViews::drawFocus(*painter, row, look_.tokens());
}

void RowTree::setHovered(const QModelIndex& row) {
    if (hovered_ == row) return;
    hovered_ = row;
    viewport()->update();
}

void RowTree::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copySelected();
    if (event->key() == Qt::Key_Escape && selectionModel()->hasSelection()) return clearSelection();
    QTreeView::keyPressEvent(event);
}

/// Tab-separated cells, one row a line: the format that spreadsheets paste.
void RowTree::copySelected() const {
    auto rows = selectionModel()->selectedRows();
    std::ranges::sort(rows, {}, [this](const QModelIndex& row) { return visualRect(row).top(); });
    QStringList lines;
    for (const auto& row : rows) {
        QStringList cells;
        for (int column = 0; column < model()->columnCount(); ++column) {
            cells << oneLine(row.siblingAtColumn(column).data().toString());
        }
        lines << cells.join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

bool RowTree::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::HoverMove) {
        setHovered(indexAt(static_cast<QHoverEvent*>(event)->position().toPoint()).siblingAtColumn(0));
    }
    if (event->type() == QEvent::HoverLeave) setHovered({});
    return QTreeView::viewportEvent(event);
}

}  // namespace tolvane::desktop
