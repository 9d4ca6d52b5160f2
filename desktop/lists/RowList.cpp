#include "desktop/lists/RowList.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include "desktop/lists/RowListAccessible.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

int bottomOf(const std::vector<RowList::Row>& rows) { return rows.empty() ? 0 : rows.back().place.bottom() + 1; }

}  // namespace

RowList::RowList(const Look& look, QWidget* parent) : QWidget(parent), look_(look) { RowListAccessible::install(); }

void RowList::contentsChanged() {
    const auto countBefore = laidOut_.size();
    const int bottomBefore = bottomOf(laidOut_);
    laidOutWidth_.reset();
    if (bottomOf(rows()) != bottomBefore) updateGeometry();
    update();
    if (rows().size() == countBefore) return;
    QAccessibleEvent event(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

const std::vector<RowList::Row>& RowList::rowsAt(int width) const {
    if (laidOutWidth_ != width) {
        laidOut_ = layOut(width);
        laidOutWidth_ = width;
    }
    return laidOut_;
}

Qt::Alignment RowList::leading() const { return tolvane::desktop::mirrored(layoutDirection(), Qt::AlignLeft); }

Qt::Alignment RowList::trailing() const { return tolvane::desktop::mirrored(layoutDirection(), Qt::AlignRight); }

QRect RowList::mirrored(QRect place) const { return QStyle::visualRect(layoutDirection(), rect(), place); }

QRect RowList::mirroredPlace(const Row& row) const { return mirrored(row.place); }

void RowList::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (const auto& row : rows()) paintRow(painter, row);
}

void RowList::paintRow(QPainter& painter, const Row& row) const {
    if (const auto& icon = row.icon) {
        const auto place = mirrored(icon->place);
        if (icon->appPath) {
            look_.appIcons().paint(painter, *icon->appPath, icon->title, place);
        } else {
            look_.icons().paint(painter, icon->symbol, look_.tokens().text2, place);
        }
    }
    for (const auto& text : row.texts) {
        painter.setFont(text.font);
        painter.setPen(look_.tokens().*text.colour);
        drawLine(painter, mirrored(text.place),
                 painter.fontMetrics().elidedText(text.text, text.elide, text.place.width()), text.alignment);
    }
    if (const auto& shape = row.shape) {
        StyleControls::drawShape(painter, mirrored(shape->place), shape->radius, look_.tokens().*shape->colour, {});
    }
}

QString RowList::tipAt(QPoint position) const {
    for (const auto& row : rows()) {
        if (!row.place.contains(QPoint(row.place.left(), position.y()))) continue;
        for (const auto& text : row.texts) {
            if (!text.tip.isEmpty() && mirrored(text.place).contains(position)) return text.tip;
        }
        return row.tip;
    }
    return {};
}

bool RowList::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    showTip(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

void RowList::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) laidOutWidth_.reset();
}

}  // namespace tolvane::desktop
