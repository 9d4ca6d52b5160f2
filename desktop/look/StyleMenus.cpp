#include "desktop/look/StyleMenus.h"

#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop::StyleMenus {

namespace {

using Type = QStyleOptionMenuItem::MenuItemType;

constexpr int leading = 12, trailing = 20;
constexpr int above = 4, below = 4;
constexpr int separatorSide = 8, separatorHeight = 9;
constexpr int shortcutGap = 12;
/// Makes room for the check mark, which reaches into the leading padding.
constexpr int checkShift = 16;
constexpr int check = 14, checkLeft = 2;
constexpr int iconLeft = 8;
constexpr int arrow = 10, arrowRight = 5;

bool isEnabled(const QStyleOptionMenuItem& item) { return item.state.testFlag(QStyle::State_Enabled); }

int checkSpace(const QStyleOptionMenuItem& item, const Fonts& fonts) {
    return item.menuHasCheckableItems ? fonts.scaled(checkShift) : 0;
}

QRect middle(QRect row, int left, int side) { return {left, row.top() + (row.height() - side) / 2, side, side}; }

QRect placed(const QStyleOptionMenuItem& item, QRect part) {
    return QStyle::visualRect(item.direction, item.rect, part);
}

void drawCheckMark(QPainter& painter, const QStyleOptionMenuItem& item, QColor colour, const Look& look) {
    const auto box = middle(item.rect, item.rect.left() + checkLeft, look.fonts().scaled(check));
    look.icons().paint(painter, "checkmark", colour, placed(item, box));
}

void drawIcon(QPainter& painter, const QStyleOptionMenuItem& item, int left) {
    const auto box = middle(item.rect, left, Sizes::icon);
    item.icon.paint(&painter, placed(item, box), Qt::AlignCenter, isEnabled(item) ? QIcon::Normal : QIcon::Disabled);
}

void drawArrow(QPainter& painter, const QStyleOptionMenuItem& item, QColor colour, const Look& look) {
    const int side = look.fonts().scaled(arrow);
    const auto box = placed(item, middle(item.rect, item.rect.right() + 1 - arrowRight - side, side));
    painter.save();
    if (item.direction == Qt::RightToLeft) {
        painter.translate(2 * QRectF(box).center().x(), 0);
        painter.scale(-1, 1);
    }
    look.icons().paint(painter, "chevron.right", colour, box);
    painter.restore();
}

/// The toolkit passes the shortcut in the text, after a tab: "Export Rules…\tCtrl+S".
void drawTexts(QPainter& painter, const QStyleOptionMenuItem& item, QRect text, bool mnemonics) {
    const auto label = item.text.section(QLatin1Char('\t'), 0, 0);
    const auto shortcut = item.text.section(QLatin1Char('\t'), 1);
    const int flags = (mnemonics ? Qt::TextShowMnemonic : Qt::TextHideMnemonic) | Qt::TextDontClip;
    painter.setFont(item.font);
    drawLine(painter, placed(item, text), label, mirrored(item.direction, Qt::AlignLeft), flags);
    if (!shortcut.isEmpty()) {
        drawLine(painter, placed(item, text), shortcut, mirrored(item.direction, Qt::AlignRight), Qt::TextDontClip);
    }
}

}  // namespace

void drawPanel(QPainter& painter, QRect menu, const Tokens& tokens) { painter.fillRect(menu, tokens.card); }

void drawFrame(QPainter& painter, QRect menu, const Tokens& tokens) {
    painter.setPen(tokens.border);
    painter.drawRect(menu.adjusted(0, 0, -1, -1));
}

void drawItem(QPainter& painter, const QStyleOptionMenuItem& item, bool mnemonics, const Look& look) {
    const auto& tokens = look.tokens();
    if (item.menuItemType == Type::Separator) {
        painter.fillRect(item.rect.adjusted(separatorSide, above, -separatorSide, -below), tokens.hairline);
        return;
    }
    painter.save();
    if (item.state.testFlag(QStyle::State_Selected)) {
        StyleControls::drawShape(painter, item.rect, Sizes::rowRadius, tokens.selection,
                                 tokens.outlinesSelection ? tokens.accent : QColor());
    }
    const auto colour = isEnabled(item) ? tokens.text : tokens.disabled;
    const int shift = checkSpace(item, look.fonts());
    if (item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked) {
        drawCheckMark(painter, item, colour, look);
    }
    if (!item.icon.isNull()) drawIcon(painter, item, item.rect.left() + shift + iconLeft);
    painter.setPen(colour);
    const int start = leading + shift + item.maxIconWidth;
    drawTexts(painter, item, item.rect.adjusted(start, above, -trailing, -below), mnemonics);
    if (item.menuItemType == Type::SubMenu) {
        drawArrow(painter, item, isEnabled(item) ? tokens.text2 : tokens.disabled, look);
    }
    painter.restore();
}

QSize itemSize(const QStyleOptionMenuItem& item, QSize contents, const Fonts& fonts) {
    if (item.menuItemType == Type::Separator) return {contents.width(), separatorHeight};
    const int gap = item.text.contains(QLatin1Char('\t')) ? shortcutGap : 0;
    const int before = leading + checkSpace(item, fonts) + item.maxIconWidth;
    return {before + contents.width() + gap + trailing, above + contents.height() + below};
}

}  // namespace tolvane::desktop::StyleMenus
