#pragma once

#include <QColor>
#include <QPoint>
#include <QString>
#include <QTextLayout>

#include "desktop/look/Fonts.h"

class QPainter;

namespace tolvane::desktop {

/// Text broken into lines at the line height of the type scale, which the toolkit's labels do not use.
class Paragraph {
public:
    /// `width` is in device-independent pixels.
    Paragraph(const QString& text, const Fonts& fonts, TextRole role, int width);

    /// The text, with its middle replaced by an ellipsis if it needs more than `lines` lines.
    static QString withoutMiddle(const QString& text, const Fonts& fonts, TextRole role, int width, int lines);

    int height() const { return lines_ * lineHeight_; }
    int lines() const { return lines_; }
    void draw(QPainter& painter, QPoint topLeft, QColor colour, Qt::Alignment alignment = Qt::AlignLeft) const;

private:
    QTextLayout layout_;
    int width_;
    int lineHeight_;
    int lines_ = 0;
};

}  // namespace tolvane::desktop
