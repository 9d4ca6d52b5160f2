#include "desktop/processes/ProcessTableHeader.h"

#include <QMouseEvent>
#include <QPainter>
#include <cstdlib>

#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

ProcessTableHeader::ProcessTableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionResizeMode(QHeaderView::Fixed);
    setStretchLastSection(false);
    setMinimumSectionSize(1);
    setSectionsClickable(true);
    setSectionsMovable(false);
    setHighlightSections(false);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
}

/// Includes a little space between the line below the heads and the first row.
QSize ProcessTableHeader::sizeHint() const { return QHeaderView::sizeHint() + QSize(0, Sizes::step); }

std::optional<int> ProcessTableHeader::edgeAt(int x) const {
    for (int section = 1; section < count(); ++section) {
        const int left = sectionViewportPosition(section);
        const int edge = layoutDirection() == Qt::LeftToRight ? left : left + sectionSize(section);
        if (std::abs(edge - x) <= Sizes::step) return section;
    }
    return std::nullopt;
}

bool ProcessTableHeader::pressed(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return false;
    const int x = event.position().toPoint().x();
    const auto section = edgeAt(x);
    if (section) drag_ = Drag{*section, x, sectionSize(*section)};
    return section.has_value();
}

bool ProcessTableHeader::moved(const QMouseEvent& event) {
    const int x = event.position().toPoint().x();
    if (!drag_) {
        viewport()->setCursor(edgeAt(x) ? Qt::SplitHCursor : Qt::ArrowCursor);
        return false;
    }
    const int wider = layoutDirection() == Qt::LeftToRight ? drag_->startX - x : x - drag_->startX;
    emit widthDragged(drag_->section, drag_->startWidth + wider);
    return true;
}

bool ProcessTableHeader::released() {
    const bool was = drag_.has_value();
    drag_.reset();
    return was;
}

bool ProcessTableHeader::viewportEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            if (pressed(*static_cast<QMouseEvent*>(event))) return true;
            break;
        case QEvent::MouseMove:
            if (moved(*static_cast<QMouseEvent*>(event))) return true;
            break;
        case QEvent::MouseButtonRelease:
            if (released()) return true;
            break;
        case QEvent::MouseButtonDblClick:
            if (const auto section = edgeAt(static_cast<QMouseEvent*>(event)->position().toPoint().x())) {
                emit widthReset(*section);
                return true;
            }
            break;
        default:
            break;
    }
    return QHeaderView::viewportEvent(event);
}

/// Heads end above that space, which belongs to the rows.
void ProcessTableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->fillRect(rect, palette().base());
    QHeaderView::paintSection(painter, rect.adjusted(0, 0, 0, -Sizes::step), section);
}

}  // namespace tolvane::desktop
