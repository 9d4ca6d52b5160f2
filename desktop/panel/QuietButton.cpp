#include "desktop/panel/QuietButton.h"

#include <QPainter>
#include <QStyle>

#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

QuietButton::QuietButton(const Look& look, std::string_view icon, const QString& text, QWidget* parent)
    : QAbstractButton(parent), look_(look), icon_(icon) {
    setText(text);
    setAccessibleName(text);
    setFont(look.fonts().font(TextRole::small));
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize QuietButton::sizeHint() const {
    const int icon = look_.fonts().scaled(Sizes::icon);
    return {icon + Sizes::gap + fontMetrics().horizontalAdvance(text()),
            look_.fonts().height(TextRole::body, Sizes::buttonHeight)};
}

void QuietButton::paintEvent(QPaintEvent*) {
    const auto colour = underMouse() || isDown() ? look_.tokens().text : look_.tokens().text2;
    const int side = look_.fonts().scaled(Sizes::icon);
    const QRect icon(0, (height() - side) / 2, side, side);
    const auto placed = [this](QRect part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    QPainter painter(this);
    look_.icons().paint(painter, icon_, colour, placed(icon));
    painter.setFont(font());
    painter.setPen(colour);
    drawLine(painter, placed(rect().adjusted(side + Sizes::gap, 0, 0, 0)), text(),
             mirrored(layoutDirection(), Qt::AlignLeft));
}

}  // namespace tolvane::desktop
