#include "desktop/look/StyleControls.h"

#include <algorithm>

#include "desktop/look/Palette.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop::StyleControls {

namespace {

constexpr int iconGap = 6;
/// The least distance between a label and the button's edge when space is short.
constexpr int leastSide = 4;

bool has(const QStyleOption& option, QStyle::StateFlag flag) { return option.state.testFlag(flag); }

QColor buttonGround(const QStyleOptionButton& option, const Tokens& tokens) {
    if (!has(option, QStyle::State_Enabled)) return tokens.window;
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)) return tokens.well;
    return has(option, QStyle::State_MouseOver) ? laidOver(tokens.control, tokens.text, 0.04) : tokens.control;
}

QColor filledGround(const QStyleOptionButton& option, QColor fill, const Tokens& tokens) {
    if (has(option, QStyle::State_Sunken)) return laidOver(fill, tokens.text, 0.18);
    return has(option, QStyle::State_MouseOver) ? laidOver(fill, tokens.text, 0.08) : fill;
}

}  // namespace

void drawShape(QPainter& painter, QRect rect, double radius, QColor ground, QColor edge) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground.isValid() ? QBrush(ground) : QBrush(Qt::NoBrush));
    painter.setPen(edge.isValid() ? QPen(edge, 1) : QPen(Qt::NoPen));
    const double inset = edge.isValid() ? 0.5 : 0;
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
    painter.restore();
}

bool isFilled(const QStyleOptionButton& option) {
    return option.features.testFlag(QStyleOptionButton::DefaultButton) && has(option, QStyle::State_Enabled);
}

void drawButton(QPainter& painter, const QStyleOptionButton& option, const Tokens& tokens, bool destructive) {
    if (option.features.testFlag(QStyleOptionButton::Flat)) return;
    if (isFilled(option)) {
        const auto fill = filledGround(option, destructive ? tokens.destructiveFill : tokens.accentFill, tokens);
        drawShape(painter, option.rect, Sizes::controlRadius, fill, {});
        return;
    }
    const auto edge = has(option, QStyle::State_Enabled) ? tokens.border : tokens.hairline;
    drawShape(painter, option.rect, Sizes::controlRadius, buttonGround(option, tokens), edge);
}

void drawButtonLabel(QPainter& painter, const QStyleOptionButton& option) {
    const auto label = QString(option.text).replace(QStringLiteral("&&"), QStringLiteral("&"));
    const bool hasIcon = !option.icon.isNull();
    const int icon = hasIcon ? option.iconSize.width() : 0;
    const int gap = hasIcon && !label.isEmpty() ? iconGap : 0;
    const int room = option.rect.width() - 2 * leastSide - icon - gap;
    const auto shown = option.fontMetrics.elidedText(label, Qt::ElideRight, std::max(0, room));
    const int words = option.fontMetrics.horizontalAdvance(shown);
    const QRect whole(option.rect.left() + (option.rect.width() - icon - gap - words) / 2, option.rect.top(),
                      icon + gap + words, option.rect.height());
    const auto placed = [&](QRect part) { return QStyle::visualRect(option.direction, whole, part); };
    if (hasIcon) {
        const bool enabled = has(option, QStyle::State_Enabled);
        const QRect place(whole.left(), whole.top(), icon, whole.height());
        option.icon.paint(&painter, placed(place), Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    }
    painter.setPen(option.palette.color(QPalette::ButtonText));
    drawLine(painter, placed(whole.adjusted(icon + gap, 0, 0, 0)), shown, Qt::AlignHCenter);
}

void drawToolButton(QPainter& painter, const QStyleOption& option, const Tokens& tokens) {
    if (has(option, QStyle::State_On)) {
        const bool active = has(option, QStyle::State_Active);
        drawShape(painter, option.rect, Sizes::controlRadius, active ? tokens.selection : tokens.selectionIdle,
                  tokens.outlinesSelection ? tokens.accent : QColor());
    } else if (has(option, QStyle::State_Sunken)) {
        drawShape(painter, option.rect, Sizes::controlRadius, tokens.well, tokens.border);
    } else if (has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled)) {
        drawShape(painter, option.rect, Sizes::controlRadius, tokens.control, tokens.border);
    }
}

void drawField(QPainter& painter, const QStyleOption& option, const Tokens& tokens) {
    const bool enabled = has(option, QStyle::State_Enabled);
    drawShape(painter, option.rect, Sizes::controlRadius, enabled ? tokens.control : tokens.window,
              enabled ? tokens.borderStrong : tokens.hairline);
}

void drawCheckBox(QPainter& painter, const QStyleOption& option, const Look& look) {
    const auto& tokens = look.tokens();
    const int side = look.fonts().scaled(Sizes::checkBox);
    QRect box(0, 0, side, side);
    box.moveCenter(option.rect.center());
    const bool enabled = has(option, QStyle::State_Enabled);
    if (!has(option, QStyle::State_On)) {
        drawShape(painter, box, Sizes::tileRadius, tokens.control, enabled ? tokens.borderStrong : tokens.hairline);
        return;
    }
    drawShape(painter, box, Sizes::tileRadius, enabled ? tokens.accentFill : tokens.disabled, {});
    look.icons().paint(painter, "checkmark", tokens.onAccent, box.adjusted(1, 1, -1, -1));
}

void drawTip(QPainter& painter, const QStyleOption& option, const Tokens& tokens) {
    painter.fillRect(option.rect, tokens.card);
    painter.setPen(tokens.border);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

void drawFocusRing(QPainter& painter, QRect control, double radius, const Tokens& tokens) {
    const double distance = 1 + tokens.focusWidth / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(tokens.accent, tokens.focusWidth));
    painter.drawRoundedRect(QRectF(control).adjusted(-distance, -distance, distance, distance), radius + distance,
                            radius + distance);
    painter.restore();
}

}  // namespace tolvane::desktop::StyleControls
