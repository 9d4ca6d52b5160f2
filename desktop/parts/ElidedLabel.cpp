#include "desktop/parts/ElidedLabel.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

ElidedLabel::ElidedLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent)
    : QWidget(parent), look_(look), role_(role), colour_(colour) {
    setFont(look.fonts().font(role));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    const auto line = oneLine(text);
    if (line == text_) return;
    text_ = line;
    setAccessibleName(line);
    updateGeometry();
    update();
}

void ElidedLabel::setAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    update();
}

void ElidedLabel::setFigures(bool figures) {
    setFont(figures ? look_.fonts().figures(role_) : look_.fonts().font(role_));
    updateGeometry();
}

void ElidedLabel::setTip(const QString& tip) { tip_ = tip; }

bool ElidedLabel::isElided() const { return fontMetrics().horizontalAdvance(text_) > width(); }

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_), look_.fonts().lineHeight(role_)};
}

QSize ElidedLabel::minimumSizeHint() const {
    const auto least = fontMetrics().horizontalAdvance(text_.left(1) + QChar(0x2026));
    return {std::min(least, sizeHint().width()), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(isEnabled() ? look_.tokens().*colour_ : look_.tokens().disabled);
    drawLine(painter, rect(), isElided() ? fontMetrics().elidedText(text_, mode_, width()) : text_,
             mirrored(layoutDirection(), alignment_));
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto tip = !isElided() ? tip_ : tip_.isEmpty() ? text_ : text_ + QStringLiteral("\n\n") + tip_;
    const auto* help = dynamic_cast<QHelpEvent*>(event);
    if (!help || tip.isEmpty()) {
        event->ignore();
        return true;
    }
    showTip(help->globalPos(), tip, this);
    return true;
}

}  // namespace tolvane::desktop
