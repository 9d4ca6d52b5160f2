#pragma once

#include <QHash>
#include <QIcon>
#include <QRect>
#include <QString>
#include <string_view>

#include "desktop/look/Fonts.h"
#include "platform/Applications.h"

class QPainter;

namespace tolvane::desktop {

/// Application icons by path, requested from the host once each; a tile with a letter for applications without one.
class AppIcons {
public:
    /// Both outlive it.
    AppIcons(Applications& applications, const Fonts& fonts);

    /// `title` supplies the tile's letter.
    void paint(QPainter& painter, std::string_view appPath, const QString& title, QRect rect) const;
    /// A null icon if the application has none that can be loaded.
    const QIcon& icon(std::string_view appPath) const;

private:
    void paintTile(QPainter& painter, std::string_view appPath, const QString& title, QRect rect) const;

    Applications& applications_;
    const Fonts& fonts_;
    mutable QHash<QString, QIcon> cache_;
};

}  // namespace tolvane::desktop
