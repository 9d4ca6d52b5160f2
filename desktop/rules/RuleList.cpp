#include "desktop/rules/RuleList.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/rules/RuleDelegate.h"

namespace tolvane::desktop {

namespace {

constexpr int least = 240, most = 360;

}  // namespace

RuleList::RuleList(const Look& look, QWidget* parent) : QListView(parent), rules_(new RuleListModel(this)) {
    setModel(rules_);
    setItemDelegate(new RuleDelegate(look, *rules_, this));
    setAccessibleName(qtText(RulesView::listName));
    setFrameShape(QFrame::NoFrame);
    setResizeMode(QListView::Adjust);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setMouseTracking(true);
    setMinimumWidth(least);
    setMaximumWidth(look.fonts().scaled(most));
    setViewportMargins(0, Sizes::gap, 0, Sizes::gap);
    setProperty("clearOfBars", true);
}

void RuleList::show(std::vector<RuleRow> rows, const std::optional<UUID>& selected) {
    const bool outer = std::exchange(showing_, true);
    rules_->show(std::move(rows));
    select(selected);
    showing_ = outer;
}

void RuleList::select(const std::optional<UUID>& id) {
    if (id == current()) return;
    const auto wanted = id ? rules_->find(*id) : QModelIndex();
    if (wanted.isValid()) {
        setCurrentIndex(wanted);
    } else {
        selectionModel()->clear();
    }
}

std::optional<UUID> RuleList::current() const {
    const auto selected = selectionModel()->selectedIndexes();
    if (selected.isEmpty()) return std::nullopt;
    return rules_->row(selected.first().row()).id;
}

void RuleList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (!showing_) emit chosen();
}

void RuleList::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const auto under = byKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!under.isValid()) return;
    setCurrentIndex(under);
    emit menuWanted(byKey ? viewport()->mapToGlobal(visualRect(under).center()) : event->globalPos());
}

void RuleList::keyPressEvent(QKeyEvent* event) {
    const bool wantsMenu = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
    if (event->key() == Qt::Key_Delete && current()) return emit deleteWanted();
    if (event->key() == Qt::Key_Escape && current()) return clearSelection();
    // Few keyboards have a menu key.
    if (wantsMenu && current()) return emit menuWanted(viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    QListView::keyPressEvent(event);
}

}  // namespace tolvane::desktop
