#include "desktop/window/Sidebar.h"

#include <QPainter>

#include "desktop/window/SidebarDelegate.h"

namespace tolvane::desktop {

Sidebar::Sidebar(const Look& look, QWidget* parent) : QListView(parent), look_(look), model_(new SidebarModel(this)) {
    setObjectName(QStringLiteral("sidebar"));
    setAccessibleName(tr("Sections"));
    setModel(model_);
    setItemDelegate(new SidebarDelegate(look, *model_, this));
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setMinimumWidth(Sizes::sidebarLeast);
    setMaximumWidth(Sizes::sidebarMost);
    connect(&look, &Look::changed, this, [this] { dress(); });
    dress();
}

void Sidebar::dress() {
    auto colours = palette();
    colours.setColor(QPalette::Base, look_.tokens().sidebar);
    setPalette(colours);
}

void Sidebar::show(const std::vector<SidebarGroup>& groups, AppSection present) {
    showing_ = true;
    model_->show(groups);
    setCurrentIndex(model_->find(present));
    showing_ = false;
}

void Sidebar::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (showing_ || !current.isValid()) return;
    if (const auto section = model_->row(current.row()).section) emit chosen(*section);
}

void Sidebar::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    QPainter painter(viewport());
    const int edge = layoutDirection() == Qt::LeftToRight ? viewport()->width() - 1 : 0;
    painter.fillRect(edge, 0, 1, viewport()->height(), look_.tokens().hairline);
}

}  // namespace tolvane::desktop
