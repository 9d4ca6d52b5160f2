#include "desktop/look/ColorScheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "desktop/look/Palette.h"

namespace tolvane::desktop {

namespace {

class FakeSettings : public AppearanceSettings {
public:
    AppearanceWishes current() override { return wishes; }
    Subscription onChange(std::function<void(const AppearanceWishes&)> changed) override {
        changed_ = std::move(changed);
        return Subscription([this] { changed_ = nullptr; });
    }
    void set(const AppearanceWishes& now) {
        wishes = now;
        changed_(wishes);
    }

    AppearanceWishes wishes;

private:
    std::function<void(const AppearanceWishes&)> changed_;
};

class ColorSchemeTest : public ::testing::Test {
protected:
    ColorSchemeTest() : before_(QApplication::palette()) {}
    ~ColorSchemeTest() override { QApplication::setPalette(before_); }

    FakeSettings settings;

private:
    QPalette before_;
};

TEST_F(ColorSchemeTest, withoutSettingsThePaletteDecides) {
    QApplication::setPalette(palette(darkTokens));
    EXPECT_TRUE(ColorScheme({}, nullptr).appearance().dark);
    EXPECT_TRUE(ColorScheme({}, &settings).appearance().dark);
    QApplication::setPalette(palette(lightTokens));
    EXPECT_FALSE(ColorScheme({}, nullptr).appearance().dark);
    EXPECT_FALSE(ColorScheme({}, &settings).appearance().dark);
}

TEST_F(ColorSchemeTest, whatTheUserSetGoesBeforeThePalette) {
    QApplication::setPalette(palette(lightTokens));
    settings.wishes = {.dark = true, .highContrast = true, .reducedMotion = true};
    EXPECT_EQ(ColorScheme({}, &settings).appearance(),
              (Appearance{.dark = true, .highContrast = true, .reducedMotion = true}));
    QApplication::setPalette(palette(darkTokens));
    settings.wishes = {.dark = false};
    EXPECT_FALSE(ColorScheme({}, &settings).appearance().dark);
}

TEST_F(ColorSchemeTest, changesArriveOnce) {
    QApplication::setPalette(palette(lightTokens));
    Appearance latest;
    int calls = 0;
    const ColorScheme scheme(
        [&](Appearance appearance) {
            latest = appearance;
            ++calls;
        },
        &settings);
    settings.set({.dark = true});
    EXPECT_TRUE(latest.dark);
    settings.set({.dark = true, .highContrast = true});
    EXPECT_TRUE(latest.dark && latest.highContrast);
    settings.set({.dark = true, .highContrast = true});
    EXPECT_EQ(calls, 2);
    settings.set({.dark = false, .highContrast = true});
    EXPECT_TRUE(!latest.dark && latest.highContrast);
    EXPECT_EQ(scheme.appearance(), latest);
}

}  // namespace
}  // namespace tolvane::desktop
