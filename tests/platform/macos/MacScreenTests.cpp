// What the host knows about the screen: windows, the menu bar, symbols, the Dock.

#include "platform/macos/objc/Block.h"
#include "platform/macos/session/DockPolicy.h"
#include "platform/macos/session/MacSymbols.h"
#include "platform/macos/session/MacWindows.h"
#include "platform/macos/session/MenuBar.h"
#include "tests/platform/macos/FrameworksTest.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;

class MacWindowsTest : public FrameworksTest {
protected:
    MacWindowsTest() {
        fake_.answer("sharedApplication", fake_.object("NSApplication", "app"));
        fake_.answer("defaultCenter", fake_.object("NSNotificationCenter", "center"));
        fake_.answer("mainQueue", fake_.object("NSOperationQueue", "main queue"));
        fake_.answer("className", [this](const Message& message) -> Value {
            return fake_.text(message.receiver == statusItem_ ? "NSStatusBarWindow" : "QNSWindow");
        });
        fake_.answer("isVisible",
                     [this](const Message& message) -> Value { return shown_.contains(message.receiver); });
        fake_.answer("occlusionState", [this](const Message& message) -> Value {
            // The other bits have no names.
            return std::uint64_t{8192} + (uncovered_.contains(message.receiver) ? 2U : 0U);
        });
        fake_.answer("windows", fake_.array({statusItem_, main_, panel_}));
        see(statusItem_);
    }
    void see(Id window) {
        shown_.insert(window);
        uncovered_.insert(window);
    }

    Id statusItem_ = fake_.object("NSWindow", "status item");
    Id main_ = fake_.object("NSWindow", "main");
    Id panel_ = fake_.object("NSWindow", "panel");
    std::set<Id> shown_;
    std::set<Id> uncovered_;
    MacWindows windows_{fake_.runtime()};
};

TEST_F(MacWindowsTest, theItemInTheMenuBarDoesNotCount) { EXPECT_FALSE(windows_.anyVisible()); }

TEST_F(MacWindowsTest, aWindowOrThePanelThatIsSeenCounts) {
    for (const Id window : {main_, panel_}) {
        see(window);
        EXPECT_TRUE(windows_.anyVisible());
        shown_.erase(window);
        EXPECT_FALSE(windows_.anyVisible());
    }
}

TEST_F(MacWindowsTest, aWindowThatIsCoveredAltogetherDoesNotCount) {
    shown_ = {main_, panel_};
    EXPECT_FALSE(windows_.anyVisible());
    uncovered_.insert(panel_);
    EXPECT_TRUE(windows_.anyVisible());
    uncovered_ = {main_};
    EXPECT_TRUE(windows_.anyVisible()) << "one of two is enough";
}

TEST_F(MacWindowsTest, asksEachWindowInTheSystemsWords) {
    see(main_);
    windows_.anyVisible();
    EXPECT_THAT(fake_.sent, ElementsAre("[NSApplication sharedApplication]", "[app windows]", "[status item isVisible]",
                                        "[status item occlusionState]", "[main isVisible]", "[main occlusionState]"));
}

TEST_F(MacWindowsTest, aProgramWithoutWindowsIsNotSeen) {
    fake_.answer("windows", Id{});
    EXPECT_FALSE(windows_.anyVisible());
}

TEST_F(MacWindowsTest, hearsOfEveryWindowsOcclusionUntilItIsEnded) {
    Id handler = nullptr;
    fake_.answer("addObserverForName:object:queue:usingBlock:", [&](const Message& message) -> Value {
        handler = fake_.copyOf(std::get<Id>(message.arguments[3]));
        return fake_.object("NSObject", "token");
    });
    int told = 0;
    auto subscription = windows_.onChange([&] { ++told; });
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSNotificationCenter defaultCenter]", "[NSOperationQueue mainQueue]",
                            "[center addObserverForName:\"NSWindowDidChangeOcclusionStateNotification\" object:nil "
                            "queue:main queue usingBlock:block]"));
    callBlock(handler, fake_.object("NSNotification", "notification"));
    EXPECT_EQ(told, 1);
    subscription.reset();
    EXPECT_EQ(fake_.sent.back(), "[center removeObserver:token]");
}

TEST(MacMenuBar, isAlwaysThere) {
    MenuBar bar;
    const auto subscription = bar.onChange([] { ADD_FAILURE(); });
    EXPECT_TRUE(bar.present());
}

class MacSymbolsTest : public FrameworksTest {
protected:
    MacSymbolsTest() {
        fake_.answer("imageWithSystemSymbolName:accessibilityDescription:", fake_.object("NSImage", "symbol"));
        fake_.answer("configurationWithPointSize:weight:scale:",
                     fake_.object("NSImageSymbolConfiguration", "configuration"));
        fake_.answer("imageWithSymbolConfiguration:", fake_.object("NSImage", "sized"));
        fake_.answer("size", Size{.width = 20, .height = 15});
        fake_.answer("CGImageForProposedRect:context:hints:", [this](const Message& message) -> Value {
            const auto* area = static_cast<const double*>(std::get<void*>(message.arguments[0]));
            area_.assign(area, area + 4);
            return fake_.object("CGImage", "drawing");
        });
        fake_.answer("initWithCGImage:", [](const Message& message) -> Value { return message.receiver; });
        const Id png = fake_.object("NSData", "png");
        fake_.at(png).text = std::string("\x89PNG\0...", 8);
        fake_.answer("representationUsingType:properties:", png);
    }

    std::vector<double> area_;
    MacSymbols symbols_{fake_.runtime()};
};

TEST_F(MacSymbolsTest, aSymbolBecomesAPicture) {
    EXPECT_THAT(symbols_.picture("memorychip", 32),
                Optional(SymbolPicture{.png = std::string("\x89PNG\0...", 8), .width = 20, .height = 15}));
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSImage imageWithSystemSymbolName:\"memorychip\" accessibilityDescription:nil]",
                            "[NSImageSymbolConfiguration configurationWithPointSize:26 weight:0 scale:2]",
                            "[symbol imageWithSymbolConfiguration:configuration]", "[sized size]",
                            "[sized CGImageForProposedRect:pointer context:nil hints:nil]",
                            "[new NSBitmapImageRep initWithCGImage:drawing]", "[NSDictionary dictionary]",
                            "[new NSBitmapImageRep representationUsingType:4 properties:dictionary]"));
    EXPECT_THAT(area_, ElementsAre(0, 0, 20, 15));
}

TEST_F(MacSymbolsTest, oneThatIsTooWideOrTooHighIsDrawnSmallerInItsProportion) {
    fake_.answer("size", Size{.width = 40, .height = 10});
    const auto wide = symbols_.picture("sidebar.trailing", 20);
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->width, 20);
    EXPECT_EQ(wide->height, 5);
    fake_.answer("size", Size{.width = 10, .height = 25});
    const auto high = symbols_.picture("lightbulb", 20);
    ASSERT_TRUE(high);
    EXPECT_EQ(high->width, 8);
    EXPECT_EQ(high->height, 20);
    EXPECT_THAT(area_, ElementsAre(0, 0, 8, 20));
}

TEST_F(MacSymbolsTest, aNameThatTheSystemDoesNotHaveIsNone) {
    fake_.answer("imageWithSystemSymbolName:accessibilityDescription:", Id{});
    EXPECT_FALSE(symbols_.picture("no.such.symbol", 16));
}

TEST_F(MacSymbolsTest, oneThatCannotBeConfiguredComesAsItIs) {
    fake_.answer("imageWithSymbolConfiguration:", Id{});
    EXPECT_TRUE(symbols_.picture("folder", 16));
}

TEST_F(MacSymbolsTest, oneThatCannotBeDrawnIsNone) {
    fake_.answer("CGImageForProposedRect:context:hints:", Id{});
    EXPECT_FALSE(symbols_.picture("folder", 16));
    fake_.answer("CGImageForProposedRect:context:hints:", fake_.object("CGImage", "drawing"));
    fake_.answer("representationUsingType:properties:", Id{});
    EXPECT_FALSE(symbols_.picture("folder", 16));
    fake_.answer("size", Size{});
    EXPECT_FALSE(symbols_.picture("folder", 16));
}

class DockPolicyTest : public FrameworksTest {};

TEST_F(DockPolicyTest, standsInTheDockWithAWindowOnly) {
    fake_.answer("sharedApplication", fake_.object("NSApplication", "app"));
    DockPolicy policy(fake_.runtime());
    policy.setInDock(true);
    policy.setInDock(false);
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSApplication sharedApplication]", "[app setActivationPolicy:0]", "[app activate]",
                            "[NSApplication sharedApplication]", "[app setActivationPolicy:1]"));
}

}  // namespace
}  // namespace tolvane::machost
