#include "desktop/look/ColorScheme.h"

#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace tolvane::desktop {

namespace {

bool paletteIsDark() {
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

}  // namespace

ColorScheme::ColorScheme(std::function<void(Appearance)> changed, AppearanceSettings* settings) {
    appearance_.dark = paletteIsDark();
    if (settings == nullptr) return;
    take(settings->current());
    changed_ = std::move(changed);
    changes_ = settings->onChange([this](const AppearanceWishes& wishes) { take(wishes); });
}

void ColorScheme::take(const AppearanceWishes& wishes) {
    const Appearance next{.dark = wishes.dark.value_or(appearance_.dark),
                          .highContrast = wishes.highContrast,
                          .reducedMotion = wishes.reducedMotion};
    if (next == appearance_) return;
    appearance_ = next;
    if (changed_) changed_(appearance_);
}

}  // namespace tolvane::desktop
