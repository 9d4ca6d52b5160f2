#include "desktop/look/Icons.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <map>
#include <string>
#include <string_view>

#include "app/model/AppSection.h"
#include "app/screens/processes/ProcessesView.h"
#include "desktop/look/Appearance.h"

namespace tolvane::desktop {
namespace {

bool showsAnything(const QPixmap& pixmap) {
    const auto image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) return true;
        }
    }
    return false;
}

/// The colour of the most opaque pixel.
QColor colourOf(const QPixmap& pixmap) {
    const auto image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    QRgb strongest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > qAlpha(strongest)) strongest = image.pixel(x, y);
        }
    }
    return QColor(strongest);
}

TEST(Icons, haveADrawingForEveryNameInUse) {
    for (const auto& section : appSections) EXPECT_TRUE(Icons::exists(section.icon)) << section.icon;
    for (const std::string_view name : {ProcessesView::inspectorIcon,
                                        ProcessesView::noSelectionIcon,
                                        std::string_view("memorychip.fill"),
                                        std::string_view("terminal"),
                                        std::string_view("gearshape"),
                                        std::string_view("power"),
                                        std::string_view("square.and.arrow.up"),
                                        std::string_view("eye"),
                                        std::string_view("checkmark.circle"),
                                        std::string_view("exclamationmark.triangle"),
                                        std::string_view("arrow.triangle.merge"),
                                        std::string_view("line.3.horizontal.decrease.circle"),
                                        std::string_view("circle.fill"),
                                        std::string_view("square.fill"),
                                        std::string_view("arrow.triangle.branch"),
                                        std::string_view("magnifyingglass"),
                                        std::string_view("ellipsis"),
                                        std::string_view("chevron.right"),
                                        std::string_view("chevron.down"),
                                        std::string_view("chevron.up.chevron.down"),
                                        std::string_view("checkmark"),
                                        std::string_view("xmark"),
                                        std::string_view("plus"),
                                        std::string_view("trash"),
                                        std::string_view("pause")}) {
        EXPECT_TRUE(Icons::exists(name)) << name;
        EXPECT_TRUE(showsAnything(Icons(lightTokens).pixmap(name, lightTokens.text, 16, 2))) << name;
    }
}

TEST(Icons, giveNothingForAnUnknownName) {
    const Icons icons(lightTokens);
    EXPECT_FALSE(Icons::exists("no.such.icon"));
    EXPECT_TRUE(icons.get("no.such.icon").isNull());
    EXPECT_TRUE(icons.pixmap("no.such.icon", lightTokens.text, 16, 1).isNull());
}

TEST(Icons, areDrawnAtThePixelRatioOfTheScreen) {
    const Icons icons(lightTokens);
    const auto pixmap = icons.pixmap("folder", lightTokens.text, 16, 2);
    EXPECT_EQ(pixmap.width(), 32);
    EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(16, 16));
}

TEST(Icons, takeTheColourOfTheirMode) {
    const Icons icons(lightTokens);
    const auto icon = icons.get("square.fill");
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1)), lightTokens.text2);
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1, QIcon::Disabled)), lightTokens.disabled);
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1, QIcon::Selected)), lightTokens.accent);
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1, QIcon::Normal, QIcon::On)), lightTokens.accent);
}

TEST(Icons, followAChangeOfScheme) {
    auto tokens = lightTokens;
    Icons icons(tokens);
    const auto icon = icons.get("square.fill");
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1)), lightTokens.text2);
    tokens = darkTokens;
    icons.clear();
    EXPECT_EQ(colourOf(icon.pixmap(QSize(16, 16), 1)), darkTokens.text2);
}

TEST(Icons, rememberADrawingForEachSizeColourAndRatio) {
    const Icons icons(lightTokens);
    for (int again = 0; again < 3; ++again) {
        icons.pixmap("folder", lightTokens.text, 16, 1);
        icons.pixmap("folder", lightTokens.text, 16, 2);
        icons.pixmap("folder", lightTokens.accent, 16, 2);
    }
    EXPECT_EQ(icons.remembered(), 3U);
}

/// A black symbol of that size, as hosts deliver them.
std::string pngOf(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::black);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

class HostSymbols : public Symbols {
public:
    std::optional<SymbolPicture> picture(std::string_view name, int pixels) override {
        asked.emplace_back(std::string(name) + " " + std::to_string(pixels));
        const auto found = pictures.find(std::string(name));
        return found == pictures.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<std::string, SymbolPicture> pictures;
    std::vector<std::string> asked;
};

TEST(Icons, areTheHostsSymbolsWhereItHasThem) {
    HostSymbols symbols;
    // Twice the resolution that it is painted at.
    symbols.pictures["folder"] = {.png = pngOf(16, 8), .width = 8, .height = 4};
    const Icons icons(lightTokens, &symbols);
    const auto pixmap = icons.pixmap("folder", lightTokens.orange, 8, 2);
    EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(8, 8));
    const auto image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(QColor(image.pixel(8, 8)), lightTokens.orange) << "in the middle, in our colour";
    EXPECT_EQ(qAlpha(image.pixel(1, 8)), 0) << "as wide as it was said to be";
    EXPECT_EQ(qAlpha(image.pixel(8, 3)), 0) << "as high as it was said to be";
    EXPECT_EQ(symbols.asked, std::vector<std::string>{"folder 16"});
}

TEST(Icons, areOurOwnWhereTheHostHasNoSuchSymbolOrOneThatCannotBeRead) {
    HostSymbols symbols;
    symbols.pictures["trash"] = {.png = "no picture", .width = 8, .height = 8};
    const Icons icons(lightTokens, &symbols);
    for (const std::string_view name : {"folder", "trash"}) {
        const auto own = Icons(lightTokens).pixmap(name, lightTokens.text, 16, 2).toImage();
        EXPECT_EQ(icons.pixmap(name, lightTokens.text, 16, 2).toImage(), own) << name;
    }
}

TEST(Icons, askTheHostOnceForEachSize) {
    HostSymbols symbols;
    symbols.pictures["folder"] = {.png = pngOf(8, 8), .width = 8, .height = 8};
    Icons icons(lightTokens, &symbols);
    for (const auto colour : {lightTokens.text, lightTokens.accent}) {
        icons.pixmap("folder", colour, 16, 1);
        icons.pixmap("trash", colour, 16, 1);
        icons.clear();
    }
    icons.pixmap("folder", lightTokens.text, 16, 2);
    EXPECT_EQ(symbols.asked, (std::vector<std::string>{"folder 16", "trash 16", "folder 32"}));
}

TEST(Icons, growThinnerInProportionWhenLarger) {
    EXPECT_DOUBLE_EQ(Icons::strokeWidth(16) * 16 / 16, 1.25);
    EXPECT_NEAR(Icons::strokeWidth(20) * 20 / 16, 1.4, 1e-9);
    EXPECT_NEAR(Icons::strokeWidth(24) * 24 / 16, 1.4, 1e-9);
    EXPECT_NEAR(Icons::strokeWidth(44) * 44 / 16, 1.75, 1e-9);
    EXPECT_NEAR(Icons::strokeWidth(88) * 88 / 16, 1.75, 1e-9);
}

}  // namespace
}  // namespace tolvane::desktop
