#include "app/rows/AppNames.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

TEST(AppNames, loseEveryAppSuffix) {
    fakes::FakeHost fake;
    fake.world->displayNames = {{"/A/Notes.app", "Notes.app"}, {"/A/Odd.app", "My.app Odd.app.app"}, {"/B", "Plain"}};
    AppNames names(*fake.host.applications);
    EXPECT_EQ(names.of("/A/Notes.app"), "Notes");
    EXPECT_EQ(names.of("/A/Odd.app"), "My Odd");
    EXPECT_EQ(names.of("/B"), "Plain");
}

TEST(AppNames, askOncePerPath) {
    fakes::FakeHost fake;
    fake.world->displayNames = {{"/A/Notes.app", "Notes"}};
    const auto names = AppNames::rowNames(*fake.host.applications, "/home/ada");
    EXPECT_EQ(names.application("/A/Notes.app"), "Notes");
    fake.world->displayNames = {{"/A/Notes.app", "Renamed"}};
    const auto copy = names;
    EXPECT_EQ(copy.application("/A/Notes.app"), "Notes");
    EXPECT_EQ(names.home, "/home/ada");
}

}  // namespace
}  // namespace tolvane
