#include "desktop/parts/Redraw.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "app/model/Observed.h"

namespace tolvane::desktop {
namespace {

struct RedrawTest : ::testing::Test {
    Observed<int> first{0}, second{0};
    QWidget widget;
    int drawn = 0;
    Redraw redraw{widget, [this] { ++drawn; }};

    RedrawTest() { redraw.follow(first, second); }
};

TEST_F(RedrawTest, changesOfOneTurnAreDrawnOnce) {
    widget.show();
    first.set(1);
    second.set(1);
    EXPECT_EQ(drawn, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(drawn, 1);
    second.set(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(drawn, 2);
}

TEST_F(RedrawTest, aHiddenWidgetCatchesUpWhenItIsShown) {
    redraw.now();
    first.set(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(drawn, 1);
    redraw.catchUp();
    EXPECT_EQ(drawn, 2);
}

TEST_F(RedrawTest, aWidgetThatMissedNothingIsNotDrawnAgain) {
    redraw.now();
    redraw.catchUp();
    EXPECT_EQ(drawn, 1);
}

}  // namespace
}  // namespace tolvane::desktop
