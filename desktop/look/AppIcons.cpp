#include "desktop/look/AppIcons.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <cstdint>

#include "desktop/look/QtText.h"
#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

namespace {

/// FNV-1a, so that an application has the same colour in every run.
std::uint32_t hash(std::string_view text) {
    std::uint32_t value = 2166136261U;
    for (const char each : text) value = (value ^ static_cast<unsigned char>(each)) * 16777619U;
    return value;
}

QString initial(const QString& title) {
    for (qsizetype index = 0; index < title.size(); ++index) {
        if (title[index].isLetterOrNumber()) return title.mid(index, 1).toUpper();
    }
    return {};
}

QIcon load(const std::string& name) {
    if (name.empty()) return {};
    const auto text = qtText(name);
    if (!QFileInfo(text).isAbsolute()) return QIcon::fromTheme(text);
    const QIcon icon(text);
    return icon.pixmap(Sizes::icon).isNull() ? QIcon() : icon;
}

}  // namespace

AppIcons::AppIcons(Applications& applications, const Fonts& fonts) : applications_(applications), fonts_(fonts) {}

const QIcon& AppIcons::icon(std::string_view appPath) const {
    const auto key = qtText(appPath);
    if (const auto found = cache_.constFind(key); found != cache_.constEnd()) return *found;
    return *cache_.insert(key, load(applications_.iconName(appPath)));
}

void AppIcons::paint(QPainter& painter, std::string_view appPath, const QString& title, QRect rect) const {
    const auto& found = icon(appPath);
    if (found.isNull()) {
        paintTile(painter, appPath, title, rect);
    } else {
        found.paint(&painter, rect);
    }
}

void AppIcons::paintTile(QPainter& painter, std::string_view appPath, const QString& title, QRect rect) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tileGrounds[hash(appPath) % tileGrounds.size()]);
    painter.drawRoundedRect(rect, Sizes::tileRadius, Sizes::tileRadius);
    auto font = fonts_.font(TextRole::caption, QFont::DemiBold);
    font.setPointSizeF(font.pointSizeF() / fonts_.factor() * rect.height() / 18.5);
    painter.setFont(font);
    painter.setPen(tileLetter);
    painter.drawText(rect, Qt::AlignCenter, initial(title));
    painter.restore();
}

}  // namespace tolvane::desktop
