#include "desktop/suggestions/SplitButton.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>

#include "desktop/look/Palette.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"
#include "desktop/parts/HoverEnd.h"

namespace tolvane::desktop {

namespace {

constexpr int padding = 11;
constexpr int arrow = 12;

QColor groundOf(const QStyleOptionToolButton& option, QStyle::SubControl part, const Tokens& tokens) {
    if (!option.state.testFlag(QStyle::State_Enabled)) return tokens.window;
    const bool isPointedAt = option.state.testFlag(QStyle::State_MouseOver);
    const bool isActive = option.activeSubControls.testFlag(part);
    if (isActive && option.state.testFlag(QStyle::State_Sunken)) return tokens.well;
    return isPointedAt && isActive ? laidOver(tokens.control, tokens.text, 0.04) : tokens.control;
}

}  // namespace

SplitButton::SplitButton(const Look& look, QWidget* parent) : QToolButton(parent), look_(look), menu_(new QMenu(this)) {
    setFont(look.fonts().font(TextRole::body));
    setFocusPolicy(Qt::StrongFocus);
    setPopupMode(QToolButton::MenuButtonPopup);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMenu(menu_);
    connect(menu_, &QMenu::aboutToShow, this, [this] {
        menu_->clear();
        emit opening(menu_);
    });
    // Emit the choice after the menu has closed.
    const auto end = [this] {
        endHover(*this);
        emit closed();
    };
    connect(menu_, &QMenu::aboutToHide, this, end, Qt::QueuedConnection);
}

void SplitButton::setLabel(const QString& label) {
    if (label == text()) return;
    setText(label);
    setAccessibleName(label);
    updateGeometry();
}

QSize SplitButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * padding + Sizes::menuPart,
            look_.fonts().height(TextRole::body, 26)};
}

void SplitButton::paintEvent(QPaintEvent*) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const auto& tokens = look_.tokens();
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    const auto edge = isEnabled ? tokens.border : tokens.hairline;
    const QRect menuPart = style()->subControlRect(QStyle::CC_ToolButton, &option, QStyle::SC_ToolButtonMenu, this);
    const QRect mainPart = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(0, 0, -Sizes::menuPart, 0));
    QPainter painter(this);
    StyleControls::drawShape(painter, rect(), Sizes::controlRadius, groundOf(option, QStyle::SC_ToolButton, tokens),
                             edge);
    const int divider = layoutDirection() == Qt::RightToLeft ? menuPart.right() : menuPart.left();
    painter.fillRect(divider, 1, 1, height() - 2, edge);
    painter.setFont(font());
    painter.setPen(isEnabled ? tokens.text : tokens.disabled);
    drawLine(painter, mainPart, text(), Qt::AlignHCenter);
    QRect chevron(0, 0, arrow, arrow);
    chevron.moveCenter(menuPart.center());
    look_.icons().paint(painter, "chevron.down", isEnabled ? tokens.text2 : tokens.disabled, chevron);
}

void SplitButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) return showMenu();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QToolButton::keyPressEvent(event);
}

/// Lets the row around it open its own menu.
void SplitButton::contextMenuEvent(QContextMenuEvent* event) { event->ignore(); }

}  // namespace tolvane::desktop
