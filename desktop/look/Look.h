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

/// All that widgets draw with, in one place that a window is given. Outlives every widget that it was given to.
class Look : public QObject {
    Q_OBJECT

public:
    /// `symbols` outlives it too, and is null where the host has none of its own.
    Look(Applications& applications, Appearance appearance, double textFactor = 1, Symbols* symbols = nullptr);
    /// Takes its style away from the application, which must not draw with what is gone.
    ~Look() override;

    const Tokens& tokens() const { return tokens_; }
    const Appearance& appearance() const { return appearance_; }
    const Fonts& fonts() const { return fonts_; }
    const Icons& icons() const { return icons_; }
    const AppIcons& appIcons() const { return appIcons_; }

    /// For each menu at the moment it opens.
    QString menuSheet() const;

    /// Gives the application its style, font and palette. Once, before the first window.
    void install();
    /// New colours for every window, without a restart.
    void setAppearance(Appearance appearance);

signals:
    /// Colours changed; what keeps colours of its own takes them anew. Others are repainted by their palette.
    void changed();

private:
    void dress() const;

    Appearance appearance_;
    Tokens tokens_;
    Fonts fonts_;
    Icons icons_;
    AppIcons appIcons_;
    /// The application owns it.
    QPointer<QStyle> style_;
};

}  // namespace tolvane::desktop
