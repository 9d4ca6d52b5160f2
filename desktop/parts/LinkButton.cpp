#include "desktop/parts/LinkButton.h"

#include <QPainter>

#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

LinkButton::LinkButton(const Look& look, const QString& text, QWidget* parent) : QAbstractButton(parent), look_(look) {
    setText(text);
    setFont(look.fonts().font(TextRole::small));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()), look_.fonts().lineHeight(TextRole::small)};
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    auto words = font();
    words.setUnderline(underMouse() || (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)));
    painter.setFont(words);
    painter.setPen(isEnabled() ? look_.tokens().accent : look_.tokens().disabled);
    drawLine(painter, rect(), text(), Qt::AlignLeft);
}

}  // namespace tolvane::desktop
