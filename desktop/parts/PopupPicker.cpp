#include "desktop/parts/PopupPicker.h"

#include <QActionGroup>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/look/MenuText.h"
#include "desktop/look/Palette.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"
#include "desktop/parts/HoverEnd.h"

namespace tolvane::desktop {

namespace {

constexpr int padding = 11;
constexpr int chevron = 12;
constexpr int leastWidth = 176, mostWidth = 280;

}  // namespace

PopupPicker::PopupPicker(const Look& look, const QString& name, QWidget* parent) : QComboBox(parent), look_(look) {
    setAccessibleName(name);
    setFont(look.fonts().font(TextRole::body));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PopupPicker::show(const QStringList& choices, int chosen) {
    if (isOpen()) return;
    const QSignalBlocker quiet(this);
    QStringList known;
    for (int index = 0; index < count(); ++index) known.append(itemText(index));
    if (known != choices) {
        clear();
        addItems(choices);
    }
    setCurrentIndex(chosen);
    updateGeometry();
    const bool isCut = fontMetrics().horizontalAdvance(currentText()) > width() - 2 * padding - chevron;
    setToolTip(isCut ? tip(currentText()) : QString());
    update();
}

QSize PopupPicker::sizeHint() const {
    const auto& fonts = look_.fonts();
    const int needed =
        fontMetrics().horizontalAdvance(currentText()) + 2 * padding + fonts.scaled(chevron) + Sizes::gap;
    return {std::clamp(needed, fonts.scaled(leastWidth), fonts.scaled(mostWidth)),
            fonts.height(TextRole::body, Sizes::buttonHeight)};
}

QSize PopupPicker::minimumSizeHint() const { return {look_.fonts().scaled(leastWidth) / 2, sizeHint().height()}; }

void PopupPicker::showPopup() {
    if (count() == 0) return;
    QMenu menu(this);
    menu_ = &menu;
    menu.setMinimumWidth(width());
    auto* group = new QActionGroup(&menu);
    for (int index = 0; index < count(); ++index) {
        auto* action = menu.addAction(menuText(itemText(index)));
        action->setCheckable(true);
        action->setData(index);
        action->setChecked(index == currentIndex());
        group->addAction(action);
    }
    if (auto* current = group->checkedAction()) menu.setActiveAction(current);
    const auto* chosen = menu.exec(mapToGlobal(QPoint(0, height())));
    menu_ = nullptr;
    endHover(*this);
    if (!chosen) return;
    setCurrentIndex(chosen->data().toInt());
    emit activated(currentIndex());
}

void PopupPicker::hidePopup() {
    if (menu_) menu_->close();
    QComboBox::hidePopup();
}

void PopupPicker::paintEvent(QPaintEvent*) {
    const auto& tokens = look_.tokens();
    QPainter painter(this);
    const auto ground = underMouse() && isEnabled() ? laidOver(tokens.control, tokens.text, 0.04) : tokens.control;
    StyleControls::drawShape(painter, rect(), Sizes::controlRadius, ground, tokens.border);
    const int side = look_.fonts().scaled(chevron);
    const QRect icon(width() - padding - side + 2, (height() - side) / 2, side, side);
    const auto placed = [this](QRect rect) { return QStyle::visualRect(layoutDirection(), this->rect(), rect); };
    look_.icons().paint(painter, "chevron.up.chevron.down", tokens.text2, placed(icon));
    const QRect text = rect().adjusted(padding, 0, -padding - side, 0);
    painter.setFont(font());
    painter.setPen(isEnabled() ? tokens.text : tokens.disabled);
    drawLine(painter, placed(text), fontMetrics().elidedText(oneLine(currentText()), Qt::ElideMiddle, text.width()),
             mirrored(layoutDirection(), Qt::AlignLeft));
}

void PopupPicker::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace tolvane::desktop
