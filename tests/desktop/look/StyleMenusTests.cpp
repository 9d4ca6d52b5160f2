#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QMenu>

#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class StyleMenusTest : public ::testing::Test {
protected:
    ~StyleMenusTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    static QImage picture(QMenu& menu) { return menu.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// Between the text and the edge, where an item shows its ground alone.
    static QColor groundOf(QMenu& menu, QAction* item) {
        const auto row = menu.actionGeometry(item);
        return picture(menu).pixelColor(row.left() + 6, row.center().y());
    }

    /// The rectangle in that part of the menu where anything is drawn on its ground.
    static QRect inked(QMenu& menu, QRect part) {
        const auto shown = picture(menu);
        QRect drawn;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                if (shown.pixel(x, y) != shown.pixel(part.topLeft())) drawn |= QRect(x, y, 1, 1);
            }
        }
        return drawn;
    }

    SampleScene scene;
    QMenu menu;
};

TEST_F(StyleMenusTest, anItemIsALineOfTextWithFourPixelsAboveAndBelow) {
    auto* item = menu.addAction("Quit");
    auto* separator = menu.addSeparator();
    menu.addAction("Force Quit");
    const int line = QFontMetrics(scene.look.fonts().font(TextRole::body)).height();
    EXPECT_EQ(menu.actionGeometry(item).height(), line + 8);
    EXPECT_EQ(menu.actionGeometry(item).topLeft(), QPoint(5, 5));
    EXPECT_EQ(menu.actionGeometry(separator).height(), 9);
    EXPECT_EQ(menu.sizeHint().height(), 2 * (line + 8) + 9 + 2 * 5);
}

TEST_F(StyleMenusTest, itemsGrowWithTheText) {
    const int usual = menu.actionGeometry(menu.addAction("Quit")).height();
    const SampleScene large({}, 2);
    QMenu largeMenu;
    EXPECT_GT(largeMenu.actionGeometry(largeMenu.addAction("Quit")).height(), usual * 3 / 2);
}

TEST_F(StyleMenusTest, thePointedRowHasTheGroundOfASelectionInBothSchemes) {
    auto* pointed = menu.addAction("Quit");
    auto* other = menu.addAction("Force Quit");
    menu.setActiveAction(pointed);
    EXPECT_EQ(groundOf(menu, pointed), lightTokens.selection);
    EXPECT_EQ(groundOf(menu, other), lightTokens.card);
    EXPECT_EQ(picture(menu).pixelColor(0, 20), lightTokens.border);
    scene.look.setAppearance({.dark = true});
    EXPECT_EQ(groundOf(menu, pointed), darkTokens.selection);
    EXPECT_EQ(groundOf(menu, other), darkTokens.card);
    EXPECT_EQ(picture(menu).pixelColor(0, 20), darkTokens.border);
}

TEST_F(StyleMenusTest, aSelectionIsOutlinedInHighContrast) {
    scene.look.setAppearance({.highContrast = true});
    auto* pointed = menu.addAction("Quit");
    menu.setActiveAction(pointed);
    const auto row = menu.actionGeometry(pointed);
    EXPECT_EQ(picture(menu).pixelColor(row.left(), row.center().y()), scene.look.tokens().accent);
}

TEST_F(StyleMenusTest, shortcutsEndInOneColumn) {
    auto* brief = menu.addAction("Import\tF1");
    auto* wide = menu.addAction("Quit\tCtrl+Shift+F1");
    const auto text = [&](QAction* item) { return inked(menu, menu.actionGeometry(item)); };
    EXPECT_NEAR(text(brief).right(), text(wide).right(), 1);
    EXPECT_NEAR(text(wide).right(), menu.actionGeometry(wide).right() - 20, 3);
}

TEST_F(StyleMenusTest, aCheckMarkStandsBeforeTheTextInBothDirections) {
    auto* item = menu.addAction("Pause");
    item->setCheckable(true);
    const auto mark = [&](int left) {
        return inked(menu, QRect(left, menu.actionGeometry(item).top(), 20, menu.actionGeometry(item).height()));
    };
    EXPECT_TRUE(mark(5).isEmpty());
    item->setChecked(true);
    EXPECT_FALSE(mark(5).isEmpty());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(mark(5).isEmpty());
    EXPECT_FALSE(mark(menu.actionGeometry(item).right() - 20).isEmpty());
}

}  // namespace
}  // namespace tolvane::desktop
