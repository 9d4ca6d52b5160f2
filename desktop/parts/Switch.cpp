#include "desktop/parts/Switch.h"

#include <QPainter>

#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

namespace {

constexpr int trackWidth = 34, trackHeight = 20;
constexpr int knobInset = 2;

}  // namespace

Switch::Switch(const Look& look, const QString& name, QWidget* parent) : QCheckBox(parent), look_(look) {
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setProperty("focusRadius", look.fonts().scaled(trackHeight) / 2);
}

QSize Switch::sizeHint() const { return {look_.fonts().scaled(trackWidth), look_.fonts().scaled(trackHeight)}; }

void Switch::paintEvent(QPaintEvent*) {
    const auto& tokens = look_.tokens();
    QPainter painter(this);
    const auto ground = !isEnabled() ? tokens.well : isChecked() ? tokens.accentFill : tokens.switchOff;
    StyleControls::drawShape(painter, rect(), height() / 2.0, ground, {});
    const int side = height() - 2 * knobInset;
    const bool atRight = isChecked() != (layoutDirection() == Qt::RightToLeft);
    const QRect knob(atRight ? width() - knobInset - side : knobInset, knobInset, side, side);
    StyleControls::drawShape(painter, knob, side / 2.0, isEnabled() ? tokens.onAccent : tokens.disabled, {});
}

}  // namespace tolvane::desktop
