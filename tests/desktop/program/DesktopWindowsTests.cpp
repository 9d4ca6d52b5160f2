#include "desktop/program/DesktopWindows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QWidget>
#include <set>

#include "tests/desktop/Pointer.h"

namespace tolvane::desktop {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Reports covered windows as a window system would.
class ToldCovers : public WindowCovers {
public:
    bool watch(Window window) override {
        if (tells) watched.insert(window);
        return tells;
    }
    void forget(Window window) override {
        watched.erase(window);
        covered.erase(window);
    }
    bool isCovered(Window window) const override { return covered.contains(window); }
    Subscription onChange(std::function<void()> changed) override {
        changed_ = std::move(changed);
        return Subscription([this] { changed_ = nullptr; });
    }
    void set(const QWidget& window, bool isCovered) {
        if (isCovered) {
            covered.insert(window.winId());
        } else {
            covered.erase(window.winId());
        }
        changed_();
    }

    bool tells = true;
    std::set<Window> watched;
    std::set<Window> covered;

private:
    std::function<void()> changed_;
};

class DesktopWindowsTest : public ::testing::Test {
protected:
    DesktopWindowsTest() {
        subscription = windows.onChange([this] { ++told; });
    }

    ToldCovers covers;
    DesktopWindows windows{&covers};
    Subscription subscription;
    int told = 0;
};

TEST_F(DesktopWindowsTest, aWindowThatIsCoveredAltogetherIsNotSeen) {
    QWidget window;
    window.show();
    turnLoop();
    EXPECT_TRUE(windows.anyVisible());
    covers.set(window, true);
    turnLoop();
    EXPECT_FALSE(windows.anyVisible());
    EXPECT_EQ(told, 2);
    covers.set(window, false);
    turnLoop();
    EXPECT_TRUE(windows.anyVisible());
    EXPECT_EQ(told, 3);
}

TEST_F(DesktopWindowsTest, oneOfTwoIsEnough) {
    QWidget first;
    QWidget second;
    first.show();
    second.show();
    turnLoop();
    covers.set(first, true);
    EXPECT_TRUE(windows.anyVisible());
    covers.set(second, true);
    EXPECT_FALSE(windows.anyVisible());
}

TEST_F(DesktopWindowsTest, newsThatChangeNothingAreNotTold) {
    QWidget first;
    QWidget second;
    first.show();
    second.show();
    turnLoop();
    told = 0;
    covers.set(first, true);
    turnLoop();
    EXPECT_EQ(told, 0);
}

TEST_F(DesktopWindowsTest, aWindowThatIsGoneIsForgotten) {
    {
        QWidget window;
        window.show();
        turnLoop();
        EXPECT_THAT(covers.watched, SizeIs(1));
    }
    EXPECT_THAT(covers.watched, IsEmpty());
    EXPECT_FALSE(windows.anyVisible());
}

TEST_F(DesktopWindowsTest, whereNobodyTellsTheToolkitsWordHolds) {
    covers.tells = false;
    QWidget window;
    window.show();
    turnLoop();
    covers.covered.insert(window.winId());
    EXPECT_TRUE(windows.anyVisible());
}

}  // namespace
}  // namespace tolvane::desktop
