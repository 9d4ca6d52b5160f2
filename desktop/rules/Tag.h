#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

enum class TagKind { plain, green, orange };

/// A label on a pill. The label always says what the colour says.
namespace TagShape {

QSize size(const Fonts& fonts, const QString& word);
/// At the rectangle's place, in its own size. On a selected row a plain one stands out by the ground of lists.
void paint(QPainter& painter, const Look& look, QRect rect, const QString& word, TagKind kind, bool onSelection);

}  // namespace TagShape

/// The same as a widget.
class Tag : public QWidget {
    Q_OBJECT

public:
    explicit Tag(const Look& look, QWidget* parent = nullptr);

    void show(const QString& word, TagKind kind);
    using QWidget::show;
    QSize sizeHint() const override { return TagShape::size(look_.fonts(), word_); }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    QString word_;
    TagKind kind_ = TagKind::plain;
};

}  // namespace tolvane::desktop
