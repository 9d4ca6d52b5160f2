#include "desktop/look/Paragraph.h"

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

QString Paragraph::withoutMiddle(const QString& text, const Fonts& fonts, TextRole role, int width, int lines) {
    const QFontMetrics metrics(fonts.font(role));
    const auto average = std::max(1, metrics.averageCharWidth());
    const auto usual = static_cast<qsizetype>(lines) * std::max(1, width) / average;
    // Even in the narrowest letters, a longer text would not fit.
    const auto most = std::min<qsizetype>(text.size(), 5 * usual + 1);
    const auto kept = [&text](qsizetype count) {
        return count >= text.size() ? text : text.left(count - count / 3) + QChar(0x2026) + text.right(count / 3);
    };
    const auto fits = [&](qsizetype count) { return Paragraph(kept(count), fonts, role, width).lines() <= lines; };
    if (fits(most)) return kept(most);
    qsizetype least = 0, tooMany = most;
    while (tooMany - least > 1) {
        const auto middle = least + (tooMany - least) / 2;
        (fits(middle) ? least : tooMany) = middle;
    }
    return kept(least);
}

void Paragraph::draw(QPainter& painter, QPoint topLeft, QColor colour, Qt::Alignment alignment) const {
    painter.save();
    painter.setPen(colour);
    for (int index = 0; index < lines_; ++index) {
        const auto line = layout_.lineAt(index);
        const double room = width_ - line.naturalTextWidth();
        const double shift = alignment.testFlag(Qt::AlignHCenter) ? room / 2
                             : alignment.testFlag(Qt::AlignRight) ? room
                                                                  : 0;
        line.draw(&painter, QPointF(topLeft) + QPointF(shift, 0));
    }
    painter.restore();
}

}  // namespace tolvane::desktop
