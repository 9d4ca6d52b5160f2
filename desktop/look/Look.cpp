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
