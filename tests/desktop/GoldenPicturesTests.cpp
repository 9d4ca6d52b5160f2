#include <QApplication>
#include <QLibraryInfo>
#include <cstdlib>
#include <ctime>

#include "desktop/look/QtText.h"
#include "desktop/program/Screens.h"
#include "desktop/window/MainWindow.h"
#include "tests/desktop/DemoScene.h"
#include "tests/desktop/GoldenPicture.h"

namespace tolvane::desktop {
namespace {

QImage settled(QWidget& widget) {
    for (int turn = 0; turn < 10; ++turn) QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    return widget.grab().toImage();
}

/// Every screen in the demo's world, which is the same in every run.
class GoldenPicturesTest : public ::testing::TestWithParam<bool> {};

TEST_P(GoldenPicturesTest, showEveryScreenAsItWasKept) {
    // Other versions come with another edition of the typeface, which is wider.
    if (QLibraryInfo::version().minorVersion() != 4) GTEST_SKIP() << "the pictures were kept with Qt 6.4";
    const bool dark = GetParam();
    DemoScene scene({.dark = dark});
    MainWindow window(scene.model, scene.look, scene.state, allScreens(scene.model, scene.look, scene.state, "en_US"));
    window.resize(1040, 640);
    window.show();
    for (const auto& screen : allScreens(scene.model, scene.look, scene.state, "en_US")) {
        scene.model.show(screen.section);
        const auto name = qtText(traits(screen.section).rawValue) + (dark ? "-dark" : "");
        EXPECT_TRUE(looksLike(settled(window), name));
    }
}

INSTANTIATE_TEST_SUITE_P(Schemes, GoldenPicturesTest, ::testing::Bool(),
                         [](const auto& scheme) { return scheme.param ? "dark" : "light"; });

TEST(GoldenPicture, tellsAPictureThatChanged) {
    if (qEnvironmentVariableIsSet("TOLVANE_KEEP_PICTURES")) GTEST_SKIP() << "pictures are being kept";
    QImage kept(QStringLiteral(TOLVANE_GOLDEN) + "/processes.png");
    ASSERT_FALSE(kept.isNull());
    kept = kept.convertToFormat(QImage::Format_RGB32);
    EXPECT_TRUE(looksLike(kept, "processes"));
    for (int x = 300; x < 380; ++x) {
        for (int y = 100; y < 130; ++y) kept.setPixel(x, y, qRgb(255, 0, 255));
    }
    EXPECT_FALSE(looksLike(kept, "processes"));
}

}  // namespace
}  // namespace tolvane::desktop
