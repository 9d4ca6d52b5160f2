#include "platform/macos/session/LaunchdServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(PidsOfJobs, readsTheNumbersOfRunningJobs) {
    EXPECT_THAT(pidsOfJobs("PID\tStatus\tLabel\n-\t0\tcom.example.sleeping\n123\t0\tcom.example.agent\n"),
                ElementsAre(123));
}

TEST(PidsOfJobs, ofNothingAreNone) {
    EXPECT_THAT(pidsOfJobs(""), IsEmpty());
    EXPECT_THAT(pidsOfJobs("\n\n\t\t\n"), IsEmpty());
}

TEST(PidsOfJobs, emptyFieldsDoNotCount) { EXPECT_THAT(pidsOfJobs("\t\t77\t0\tx"), ElementsAre(77)); }

TEST(PidsOfJobs, onlyAWholeNumberCounts) {
    EXPECT_THAT(pidsOfJobs("12a\t0\n 13\t0\n14 \t0\n2147483648\t0\n0x10\t0\n+-3\t0\n"), IsEmpty());
    EXPECT_THAT(pidsOfJobs("+5\t0\n-6\t0\n2147483647\t0\n5\t0"), ElementsAre(-6, 5, 2147483647));
}

struct LaunchdManagedPIDs : ::testing::Test {
    fakes::FakeHost fake;
    std::set<Pid> managed() { return LaunchdServices(*fake.host.children).managedPIDs(); }
};

TEST_F(LaunchdManagedPIDs, areReadFromTheList) {
    fake.world->childOutput["/bin/launchctl list"] = "PID\tStatus\tLabel\n9\t0\ta\n";
    EXPECT_THAT(managed(), ElementsAre(9));
}

TEST_F(LaunchdManagedPIDs, areNoneWhenTheListFails) {
    EXPECT_THAT(managed(), IsEmpty());
    EXPECT_EQ(fake.world->timesAsked("run /bin/launchctl list"), 1U);
}

}  // namespace
}  // namespace tolvane::machost
