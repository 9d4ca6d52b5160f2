#pragma once

#include <QColor>
#include <QPoint>
#include <QString>
#include <QTextLayout>

#include "desktop/look/Fonts.h"

class QPainter;

namespace tolvane::desktop {

/// Text broken into lines of the type scale's own height, which labels of the toolkit do not keep.
class Paragraph {
public:
    /// `width` in device-independent pixels.
    Paragraph(const QString& text, const Fonts& fonts, TextRole role, int width);

    /// As much of the text as stands in `lines` lines, an ellipsis in place of its middle.
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
