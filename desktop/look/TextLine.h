#pragma once

#include <QMargins>
#include <QPainter>
#include <QString>
#include <QStyle>

namespace tolvane::desktop {

/// Draws one line of text in its own reading direction, whichever way the window runs: "3.64 GB" never becomes "GB
/// 3.64". `alignment` is as seen on the screen; pass it through `mirrored` to follow the window's direction. `flags`
/// are Qt's text flags to add, such as Qt::TextShowMnemonic.
inline void drawLine(QPainter& painter, QRect rect, const QString& text, Qt::Alignment alignment, int flags = 0) {
    const auto direction = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    painter.drawText(rect,
                     static_cast<int>(alignment | Qt::AlignVCenter | Qt::AlignAbsolute) | Qt::TextSingleLine |
                         static_cast<int>(direction) | flags,
                     text);
}

/// Swaps left and right in a right-to-left window.
inline Qt::Alignment mirrored(Qt::LayoutDirection direction, Qt::Alignment alignment) {
    return QStyle::visualAlignment(direction, alignment);
}

/// Layouts mirror their contents but not their margins.
inline QMargins mirrored(Qt::LayoutDirection direction, QMargins margins) {
    if (direction == Qt::LeftToRight) return margins;
    return {margins.right(), margins.top(), margins.left(), margins.bottom()};
}

/// Names may contain anything; unprintable characters become spaces, so that the text stays on one line.
inline QString oneLine(QString text) {
    for (auto& each : text) {
        if (each.category() == QChar::Other_Control) each = QLatin1Char(' ');
    }
    return text;
}

}  // namespace tolvane::desktop
