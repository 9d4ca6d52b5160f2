#include "desktop/parts/Paragraph.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

namespace tolvane::desktop {

Paragraph::Paragraph(const QString& text, const Fonts& fonts, TextRole role, int width)
    : layout_(text, fonts.font(role)), width_(std::max(1, width)), lineHeight_(fonts.lineHeight(role)) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_.setTextOption(option);
    const double above = (lineHeight_ - QFontMetricsF(fonts.font(role)).height()) / 2;
    layout_.beginLayout();
    for (auto line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        line.setLineWidth(width_);
        line.setPosition(QPointF(0, lines_++ * lineHeight_ + above));
    }
    layout_.endLayout();
}

void Paragraph::draw(QPainter& painter, QPoint topLeft, QColor colour, Qt::Alignment alignment) const {
    painter.save();
    painter.setPen(colour);
    for (int index = 0; index < lines_; ++index) {
        const auto line = layout_.lineAt(index);
        const double room = width_ - line.naturalTextWidth();
        /// Lines that read from right to left start at the right by themselves.
        const bool startsRight = layout_.text().isRightToLeft();
        double shift = alignment.testFlag(Qt::AlignHCenter) ? room / 2 : alignment.testFlag(Qt::AlignRight) ? room : 0;
        if (startsRight) shift -= room;
        line.draw(&painter, QPointF(topLeft) + QPointF(shift, 0));
    }
    painter.restore();
}

}  // namespace tolvane::desktop
