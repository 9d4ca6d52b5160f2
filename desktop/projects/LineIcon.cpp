#include "desktop/projects/LineIcon.h"

#include <QPainter>

namespace tolvane::desktop {

LineIcon::LineIcon(const Look& look, std::string_view icon, QColor Tokens::* colour, int size, QWidget* parent)
    : QWidget(parent), look_(look), icon_(icon), colour_(colour) {
    const int side = look.fonts().scaled(size);
    setFixedSize(side, side);
}

void LineIcon::setIcon(std::string_view icon) {
    if (icon == icon_) return;
    icon_ = icon;
    update();
}

void LineIcon::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    look_.icons().paint(painter, icon_, look_.tokens().*colour_, rect());
}

}  // namespace tolvane::desktop
