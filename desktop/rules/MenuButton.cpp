#include "desktop/rules/MenuButton.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOptionButton>

#include "desktop/look/StyleControls.h"
#include "desktop/parts/HoverEnd.h"

namespace tolvane::desktop {

namespace {

constexpr int padding = 9;
constexpr int chevron = 10;
constexpr int between = 5;

}  // namespace

MenuButton::MenuButton(const Look& look, std::string_view icon, const QString& name, QWidget* parent)
    : QPushButton(parent), look_(look), icon_(icon) {
    setToolTip(name);
    setAccessibleName(name);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, &MenuButton::open);
}

QSize MenuButton::sizeHint() const {
    const auto& fonts = look_.fonts();
    return {2 * padding + fonts.scaled(Sizes::icon) + between + fonts.scaled(chevron),
            fonts.height(TextRole::body, Sizes::buttonHeight)};
}

void MenuButton::open() {
    QMenu menu(this);
    emit opening(&menu);
    const int aligned = layoutDirection() == Qt::RightToLeft ? 0 : width() - menu.sizeHint().width();
    menu.exec(mapToGlobal(QPoint(aligned, height() + Sizes::step)));
    endHover(*this);
}

void MenuButton::paintEvent(QPaintEvent*) {
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    StyleControls::drawButton(painter, option, look_.tokens(), false);
    const int side = look_.fonts().scaled(Sizes::icon);
    const int small = look_.fonts().scaled(chevron);
    const auto placed = [this](QRect rect) { return QStyle::visualRect(layoutDirection(), this->rect(), rect); };
    const auto& icons = look_.icons();
    icons.paint(painter, icon_, look_.tokens().text, placed(QRect(padding, (height() - side) / 2, side, side)));
    icons.paint(painter, "chevron.down", look_.tokens().text2,
                placed(QRect(width() - padding - small, (height() - small) / 2 + 1, small, small)));
}

}  // namespace tolvane::desktop
