#pragma once

#include <QObject>
#include <QPointer>
#include <QStyle>

#include "desktop/look/AppIcons.h"
#include "desktop/look/Appearance.h"
#include "desktop/look/Fonts.h"
#include "desktop/look/Icons.h"
#include "platform/Applications.h"
#include "platform/Symbols.h"

namespace tolvane::desktop {

/// Everything that widgets need for drawing. Outlives every widget that uses it.
class Look : public QObject {
    Q_OBJECT

public:
    /// `symbols` outlives the look, and is null on hosts without symbols of their own.
    Look(Applications& applications, Appearance appearance, double textFactor = 1, Symbols* symbols = nullptr);
    /// Removes the style from the application, which would otherwise draw with deleted objects.
    ~Look() override;

    const Tokens& tokens() const { return tokens_; }
    const Appearance& appearance() const { return appearance_; }
    const Fonts& fonts() const { return fonts_; }
    const Icons& icons() const { return icons_; }
    const AppIcons& appIcons() const { return appIcons_; }

    /// Sets the application's style, font and palette. Call once, before the first window.
    void install();
    /// Recolours every window without a restart.
    void setAppearance(Appearance appearance);

signals:
    /// Colours changed. Only for widgets that cache colours; others are repainted with their palette.
    void changed();

private:
    void dress() const;

    Appearance appearance_;
    Tokens tokens_;
    Fonts fonts_;
    Icons icons_;
    AppIcons appIcons_;
    /// Owned by the application.
    QPointer<QStyle> style_;
};

}  // namespace tolvane::desktop
