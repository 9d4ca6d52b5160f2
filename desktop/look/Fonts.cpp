#include "desktop/look/Fonts.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <algorithm>
#include <array>
#include <cmath>

namespace tolvane::desktop {

namespace {

struct Step {
    TextRole role;
    /// At 96 dpi.
    double points;
    QFont::Weight weight;
    /// In pixels.
    int line;
};

constexpr std::array<Step, 7> scale = {{
    {TextRole::display, 25.5, QFont::DemiBold, 42},
    {TextRole::title, 11.25, QFont::DemiBold, 20},
    {TextRole::headline, 9.75, QFont::DemiBold, 18},
    {TextRole::body, 9.75, QFont::Normal, 18},
    {TextRole::section, 9, QFont::DemiBold, 16},
    {TextRole::small, 9, QFont::Normal, 16},
    {TextRole::caption, 8.25, QFont::Normal, 14},
}};

constexpr const Step& step(TextRole role) { return scale[static_cast<std::size_t>(role)]; }

constexpr std::array<const char*, 3> figureFiles = {
    ":/fonts/InterTabular-Regular.otf", ":/fonts/InterTabular-Medium.otf", ":/fonts/InterTabular-SemiBold.otf"};

/// Checks first: Qt would keep a second copy of a font that is loaded again.
bool loadFigures(const QString& family) {
    if (QFontDatabase::hasFamily(family)) return true;
    bool loaded = false;
    for (const auto* file : figureFiles) loaded = QFontDatabase::addApplicationFont(QLatin1String(file)) >= 0 || loaded;
    return loaded;
}

QString installed(const QString& wanted, const QString& otherwise) {
    return QFontDatabase::hasFamily(wanted) ? wanted : otherwise;
}

}  // namespace

Fonts::Fonts(double factor) : factor_(factor) {
    const auto system = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
    const auto figures = QStringLiteral("Inter Tabular");
    family_ = installed(QStringLiteral("Inter"), system);
    displayFamily_ = installed(QStringLiteral("Inter Display"), family_);
    figuresFamily_ = family_ != system && loadFigures(figures) ? figures : family_;
}

QFont Fonts::make(const QString& family, TextRole role, QFont::Weight weight) const {
    QFont font(family);
    font.setPointSizeF(step(role).points * factor_);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

QFont Fonts::font(TextRole role) const { return font(role, step(role).weight); }

QFont Fonts::font(TextRole role, QFont::Weight weight) const {
    return make(role == TextRole::display ? displayFamily_ : family_, role, weight);
}

QFont Fonts::figures(TextRole role) const { return figures(role, step(role).weight); }

QFont Fonts::figures(TextRole role, QFont::Weight weight) const { return make(figuresFamily_, role, weight); }

QFont Fonts::fixed() const {
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(step(TextRole::caption).points * factor_);
    return font;
}

int Fonts::lineHeight(TextRole role) const {
    const auto scaled = static_cast<int>(std::lround(step(role).line * factor_));
    return std::max(scaled, QFontMetrics(font(role)).height());
}

int Fonts::scaled(int pixels) const { return static_cast<int>(std::lround(pixels * factor_)); }

int Fonts::height(TextRole role, int least, int padding) const { return std::max(least, lineHeight(role) + padding); }

}  // namespace tolvane::desktop
