#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

enum class TagKind { plain, green, orange };

/// A label in a pill. The label always conveys what the colour does.
namespace TagShape {

QSize size(const Fonts& fonts, const QString& word);
/// `rect` has the size that `size` returns. On a selected row, a plain tag gets the list background to stand out.
void paint(QPainter& painter, const Look& look, QRect rect, const QString& word, TagKind kind, bool onSelection);

}  // namespace TagShape

/// A tag as a widget.
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
