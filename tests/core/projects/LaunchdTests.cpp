#include "core/projects/Launchd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(LaunchdParsePIDs, readsTheNumbersOfRunningJobs) {
    EXPECT_THAT(Launchd::parsePIDs("PID\tStatus\tLabel\n-\t0\tcom.example.sleeping\n123\t0\tcom.example.agent\n"),
                ElementsAre(123));
}

TEST(LaunchdParsePIDs, ofNothingAreNone) {
    EXPECT_THAT(Launchd::parsePIDs(""), IsEmpty());
    EXPECT_THAT(Launchd::parsePIDs("\n\n\t\t\n"), IsEmpty());
}

TEST(LaunchdParsePIDs, emptyFieldsDoNotCount) { EXPECT_THAT(Launchd::parsePIDs("\t\t77\t0\tx"), ElementsAre(77)); }

TEST(LaunchdParsePIDs, onlyAWholeNumberCounts) {
    EXPECT_THAT(Launchd::parsePIDs("12a\t0\n 13\t0\n14 \t0\n2147483648\t0\n0x10\t0\n+-3\t0\n"), IsEmpty());
    EXPECT_THAT(Launchd::parsePIDs("+5\t0\n-6\t0\n2147483647\t0\n5\t0"), ElementsAre(-6, 5, 2147483647));
}

struct LaunchdManagedPIDs : ::testing::Test {
    fakes::FakeHost fake;
    std::set<Pid> managed() { return Launchd::managedPIDs(*fake.host.services, *fake.host.children); }
};

TEST_F(LaunchdManagedPIDs, areWhatTheHostSays) {
    fake.world->managedPIDs = {3, 4};
    EXPECT_THAT(managed(), ElementsAre(3, 4));
    EXPECT_EQ(fake.world->timesAsked("run /bin/launchctl list"), 0U);
}

TEST_F(LaunchdManagedPIDs, areReadFromTheListWhereTheHostHasNoAnswer) {
    fake.world->managedPIDs.reset();
    fake.world->childOutput["/bin/launchctl list"] = "PID\tStatus\tLabel\n9\t0\ta\n";
    EXPECT_THAT(managed(), ElementsAre(9));
}

TEST_F(LaunchdManagedPIDs, areNoneWhenTheListFails) {
    fake.world->managedPIDs.reset();
    EXPECT_THAT(managed(), IsEmpty());
    EXPECT_EQ(fake.world->timesAsked("run /bin/launchctl list"), 1U);
}

}  // namespace
}  // namespace tolvane
