#include "desktop/program/OutsideRequests.h"

#include <gmock/gmock.h>

#include "tests/app/ModelTest.h"

namespace tolvane::desktop {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct OutsideRequestsTest : ModelTest {
    bool isShown = true;
    int forward = 0;
    std::unique_ptr<OutsideRequests> requests;

    void SetUp() override {
        start();
        requests = std::make_unique<OutsideRequests>(
            *model, *fake.host.notifications,
            OutsideRequests::Window{.bringForward = [this] { ++forward; }, .isShown = [this] { return isShown; }});
    }
    void TearDown() override { requests.reset(); }

    void click(const std::optional<std::string>& section) const {
        for (const auto& [number, clicked] : world.clickObservers) clicked(section);
    }
};

}  // namespace

TEST_F(OutsideRequestsTest, aClickOnANotificationOpensItsSection) {
    click("history");
    EXPECT_EQ(*model->section, AppSection::history);
    EXPECT_EQ(forward, 1);
}

TEST_F(OutsideRequestsTest, aClickOnOneWithoutSectionOnlyBringsTheWindow) {
    click(std::nullopt);
    click("no such section");
    EXPECT_EQ(*model->section, AppSection::processes);
    EXPECT_EQ(forward, 2);
}

TEST_F(OutsideRequestsTest, clicksAfterItsEndGoNowhere) {
    requests.reset();
    click("history");
    EXPECT_EQ(*model->section, AppSection::processes);
}

TEST_F(OutsideRequestsTest, withTheWindowOpenTheImportIsShownThere) {
    requests->openFiles({"/nowhere/x.tolvanerules"});
    EXPECT_TRUE(*model->importMessage);
    EXPECT_EQ(forward, 1);
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(OutsideRequestsTest, withTheWindowClosedTheImportIsTold) {
    isShown = false;
    requests->openFiles({"/nowhere/x.tolvanerules"});
    EXPECT_FALSE(*model->importMessage);
    EXPECT_EQ(forward, 0);
    ASSERT_THAT(world.notifications, SizeIs(1));
    EXPECT_EQ(world.notifications.front().title, "Tolvane Rules");
    EXPECT_EQ(world.notifications.front().section, std::nullopt);
}

TEST_F(OutsideRequestsTest, noFilesAreNothing) {
    requests->openFiles({});
    EXPECT_EQ(forward, 0);
}

}  // namespace tolvane::desktop
