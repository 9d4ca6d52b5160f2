#include "desktop/look/Fonts.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>

namespace tolvane::desktop {
namespace {

constexpr std::array everyRole = {TextRole::display, TextRole::title, TextRole::headline, TextRole::body,
                                  TextRole::section, TextRole::small, TextRole::caption};

TEST(Fonts, figuresHaveDigitsOfOneWidth) {
    const Fonts fonts;
    for (const auto role : everyRole) {
        for (const auto weight : {QFont::Normal, QFont::Medium, QFont::DemiBold}) {
            const QFontMetricsF metrics(fonts.figures(role, weight));
            EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QStringLiteral("111.1 MB")),
                             metrics.horizontalAdvance(QStringLiteral("888.8 MB")));
        }
    }
}

TEST(Fonts, carryTheirDigitsAndTheirLicence) {
    const Fonts fonts;
    EXPECT_EQ(fonts.figures(TextRole::small).family(), QStringLiteral("Inter Tabular"));
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/fonts/OFL.txt")));
}

TEST(Fonts, loadTheirDigitsOnce) {
    const Fonts first, second;
    EXPECT_EQ(QFontDatabase::styles(QStringLiteral("Inter Tabular")).size(), 3);
}

TEST(Fonts, nothingIsSmallerThanACaption) {
    const Fonts fonts;
    const auto least = fonts.font(TextRole::caption).pointSizeF();
    for (const auto role : everyRole) EXPECT_GE(fonts.font(role).pointSizeF(), least);
    EXPECT_DOUBLE_EQ(least, 8.25);
    EXPECT_GE(fonts.fixed().pointSizeF(), least);
}

TEST(Fonts, growWithTheUsersFactor) {
    const Fonts plain, doubled(2);
    for (const auto role : everyRole) {
        EXPECT_DOUBLE_EQ(doubled.font(role).pointSizeF(), 2 * plain.font(role).pointSizeF());
        EXPECT_GE(doubled.lineHeight(role), 2 * plain.lineHeight(role) - 2);
    }
}

TEST(Fonts, rowsGrowOnlyWhenTheirTextNeedsIt) {
    EXPECT_EQ(Fonts().height(TextRole::body, 26), 26);
    EXPECT_EQ(Fonts(2).height(TextRole::body, 26), 2 * 18 + 8);
}

}  // namespace
}  // namespace tolvane::desktop
