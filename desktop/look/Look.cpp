#include "desktop/look/Look.h"

#include <QApplication>
#include <QToolTip>

#include "desktop/look/AccessibleRoles.h"
#include "desktop/look/Palette.h"
#include "desktop/look/TolvaneStyle.h"

namespace tolvane::desktop {

Look::Look(Applications& applications, Appearance appearance, double textFactor, Symbols* symbols)
    : appearance_(appearance),
      tokens_(appearance.tokens()),
      fonts_(textFactor),
      icons_(tokens_, symbols),
      appIcons_(applications, fonts_) {}

Look::~Look() {
    if (qApp && style_ && QApplication::style() == style_) QApplication::setStyle(QStringLiteral("Fusion"));
}

void Look::install() {
    installAccessibleRoles();
    style_ = new TolvaneStyle(*this);
    QApplication::setStyle(style_);
    QApplication::setFont(fonts_.font(TextRole::body));
    dress();
}

/// Style sheet for menus, the only widgets that are not drawn by the style.
QString Look::menuSheet() const {
    return QStringLiteral(
               "QMenu { background: %1; color: %2; border: 1px solid %3; padding: 4px; }"
               "QMenu::item { padding: 4px 20px 4px 12px; border-radius: %6px; }"
               "QMenu::item:selected { background: %4; color: %2; }"
               "QMenu::item:disabled { color: %5; }"
               "QMenu::separator { height: 1px; background: %7; margin: 4px 8px; }")
        .arg(tokens_.card.name(), tokens_.text.name(), tokens_.border.name(), tokens_.selection.name(),
             tokens_.disabled.name(), QString::number(Sizes::rowRadius), tokens_.hairline.name());
}

void Look::setAppearance(Appearance appearance) {
    if (appearance == appearance_) return;
    appearance_ = appearance;
    tokens_ = appearance.tokens();
    icons_.clear();
    dress();
    emit changed();
}

void Look::dress() const {
    QApplication::setPalette(palette(tokens_));
    QToolTip::setPalette(palette(tokens_));
    QToolTip::setFont(fonts_.font(TextRole::small));
}

}  // namespace tolvane::desktop
