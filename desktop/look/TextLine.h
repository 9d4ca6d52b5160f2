#pragma once

#include <QMargins>
#include <QPainter>
#include <QString>
#include <QStyle>

namespace tolvane::desktop {

/// Draws one line of text as it reads by itself, whichever way the window runs: "3.64 GB" never becomes "GB 3.64".
/// `alignment` is where it stands on the screen; use `mirrored` for what follows the window's direction.
inline void drawLine(QPainter& painter, QRect rect, const QString& text, Qt::Alignment alignment) {
    const auto direction = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    painter.drawText(rect,
                     static_cast<int>(alignment | Qt::AlignVCenter | Qt::AlignAbsolute) | Qt::TextSingleLine |
                         static_cast<int>(direction),
                     text);
}

/// Left becomes right in a window that runs from right to left.
inline Qt::Alignment mirrored(Qt::LayoutDirection direction, Qt::Alignment alignment) {
    return QStyle::visualAlignment(direction, alignment);
}

/// Layouts mirror what they hold, but not their margins.
inline QMargins mirrored(Qt::LayoutDirection direction, QMargins margins) {
    if (direction == Qt::LeftToRight) return margins;
    return {margins.right(), margins.top(), margins.left(), margins.bottom()};
}

/// Names may hold anything; what has no picture becomes a blank, so that a line stays a line.
inline QString oneLine(QString text) {
    for (auto& each : text) {
        if (each.category() == QChar::Other_Control) each = QLatin1Char(' ');
    }
    return text;
}

}  // namespace tolvane::desktop
