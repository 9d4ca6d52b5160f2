#include "desktop/rules/Tag.h"

#include <QPainter>

#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

namespace {

constexpr int padding = 7;

struct Inks {
    QColor Tokens::* ground;
    QColor Tokens::* word;
};

Inks inksOf(TagKind kind, bool onSelection) {
    switch (kind) {
        case TagKind::green:
            return {&Tokens::tagGreen, &Tokens::greenText};
        case TagKind::orange:
            return {&Tokens::tagOrange, &Tokens::orangeText};
        case TagKind::plain:
            break;
    }
    return {onSelection ? &Tokens::content : &Tokens::tagPlain, &Tokens::text2};
}

}  // namespace

namespace TagShape {

QSize size(const Fonts& fonts, const QString& word) {
    const QFontMetrics metrics(fonts.figures(TextRole::caption));
    return {metrics.horizontalAdvance(word) + 2 * padding, fonts.height(TextRole::caption, Sizes::tagHeight, 4)};
}

void paint(QPainter& painter, const Look& look, QRect rect, const QString& word, TagKind kind, bool onSelection) {
    const auto& tokens = look.tokens();
    const auto inks = inksOf(kind, onSelection);
    StyleControls::drawShape(painter, rect, rect.height() / 2.0, tokens.*inks.ground, {});
    painter.setFont(look.fonts().figures(TextRole::caption));
    painter.setPen(tokens.*inks.word);
    painter.drawText(rect, Qt::AlignCenter, word);
}

}  // namespace TagShape

Tag::Tag(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Tag::show(const QString& word, TagKind kind) {
    if (word == word_ && kind == kind_) return;
    word_ = word;
    kind_ = kind;
    setAccessibleName(word);
    updateGeometry();
    update();
}

void Tag::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    TagShape::paint(painter, look_, rect(), word_, kind_, false);
}

}  // namespace tolvane::desktop
