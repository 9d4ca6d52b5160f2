#include "desktop/look/StyleViews.h"

#include <QFontMetrics>
#include <algorithm>

#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop::StyleViews {

namespace {

constexpr int chevron = 10;
constexpr int arrowGap = 3;

bool isSorted(const QStyleOptionHeader& option) { return option.sortIndicator != QStyleOptionHeader::None; }

QFont headFont(bool sorted, const Fonts& fonts) {
    return fonts.font(TextRole::caption, sorted ? QFont::DemiBold : QFont::Normal);
}

void drawArrow(QPainter& painter, const QStyleOptionHeader& option, QRect arrow, const Look& look) {
    /// The toolkit uses SortDown for ascending order.
    const bool ascending = option.sortIndicator == QStyleOptionHeader::SortDown;
    painter.save();
    if (ascending) {
        painter.translate(QRectF(arrow).center());
        painter.rotate(180);
        painter.translate(-QRectF(arrow).center());
    }
    look.icons().paint(painter, "chevron.down", look.tokens().text, arrow);
    painter.restore();
}

/// Heads of number columns are right-aligned in both directions.
Qt::Alignment headAlignment(const QStyleOptionHeader& option) {
    return option.textAlignment.testFlag(Qt::AlignRight) ? Qt::Alignment(Qt::AlignRight)
                                                         : mirrored(option.direction, Qt::AlignLeft);
}

/// Places the arrow at the start of the text.
QRect arrowBeside(const QRect& text, const QStyleOptionHeader& option, int width) {
    const bool figures = option.textAlignment.testFlag(Qt::AlignRight);
    const bool right = !figures && option.direction == Qt::RightToLeft;
    const int start = figures ? text.right() + 1 - width : text.left();
    const int left = right ? text.right() + 1 + arrowGap : start - arrowGap - chevron;
    return {left, text.center().y() - chevron / 2 + 1, chevron, chevron};
}

}  // namespace

void drawRow(QPainter& painter, const QStyleOption& option, QRect rect, double radius, const Tokens& tokens) {
    if (option.state.testFlag(QStyle::State_Selected)) {
        const bool active = option.state.testFlag(QStyle::State_Active);
        StyleControls::drawShape(painter, rect, radius, active ? tokens.selection : tokens.selectionIdle,
                                 tokens.outlinesSelection ? tokens.accent : QColor());
    } else if (option.state.testFlag(QStyle::State_MouseOver)) {
        StyleControls::drawShape(painter, rect, radius, tokens.hover, {});
    }
}

void drawFocus(QPainter& painter, const QStyleOption& option, const Tokens& tokens) {
    if (!option.state.testFlag(QStyle::State_KeyboardFocusChange)) return;
    const double inset = tokens.focusWidth / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(tokens.accent, tokens.focusWidth));
    painter.drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), Sizes::rowRadius - inset,
                            Sizes::rowRadius - inset);
    painter.restore();
}

QRect disclosureRect(const QStyleOption& option) {
    const int shift = Sizes::margin - Sizes::treeIndent;
    const int side = std::clamp(option.rect.height() * chevron / Sizes::tableRowHeight, chevron, Sizes::icon);
    QRect box(0, 0, side, side);
    box.moveCenter(option.rect.center());
    const bool leftToRight = option.direction == Qt::LeftToRight;
    const int gap = (chevron - side) / 2;
    box.moveLeft(leftToRight ? option.rect.left() + shift + gap : option.rect.right() + 1 - shift - gap - side);
    return box;
}

void drawDisclosure(QPainter& painter, const QStyleOption& option, const Look& look) {
    if (!option.state.testFlag(QStyle::State_Children)) return;
    const auto rect = disclosureRect(option);
    const bool open = option.state.testFlag(QStyle::State_Open);
    painter.save();
    if (!open && option.direction == Qt::RightToLeft) {
        painter.translate(2 * QRectF(rect).center().x(), 0);
        painter.scale(-1, 1);
    }
    look.icons().paint(painter, open ? "chevron.down" : "chevron.right", look.tokens().text2, rect);
    painter.restore();
}

void drawHeadGround(QPainter& painter, QRect rect, const Tokens& tokens) {
    painter.fillRect(rect, tokens.content);
    painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), tokens.hairline);
}

QRect columnText(QRect section, bool first, bool last, Qt::LayoutDirection direction) {
    const int leading = first ? Sizes::margin : Sizes::columnGap / 2;
    const int trailing = last ? Sizes::tableTrailing : Sizes::columnGap / 2;
    return direction == Qt::LeftToRight ? section.adjusted(leading, 0, -trailing, 0)
                                        : section.adjusted(trailing, 0, -leading, 0);
}

void drawHeadLabel(QPainter& painter, const QStyleOptionHeader& option, const Look& look) {
    using Position = QStyleOptionHeader::SectionPosition;
    const bool mirroredHeads = option.direction == Qt::RightToLeft;
    const bool only = option.position == Position::OnlyOneSection;
    const bool first = only || option.position == (mirroredHeads ? Position::End : Position::Beginning);
    const bool last = only || option.position == (mirroredHeads ? Position::Beginning : Position::End);
    const auto text = columnText(option.rect.adjusted(0, 0, 0, -1), first, last, option.direction);
    const auto font = headFont(isSorted(option), look.fonts());
    painter.save();
    painter.setFont(font);
    painter.setPen(isSorted(option) ? look.tokens().text : look.tokens().text2);
    drawLine(painter, text, option.text, headAlignment(option));
    painter.restore();
    if (isSorted(option)) {
        drawArrow(painter, option, arrowBeside(text, option, QFontMetrics(font).horizontalAdvance(option.text)), look);
    }
}

int sortedHeadWidth(const QString& title, const Fonts& fonts) {
    return QFontMetrics(headFont(true, fonts)).horizontalAdvance(title) + chevron + arrowGap;
}

}  // namespace tolvane::desktop::StyleViews
