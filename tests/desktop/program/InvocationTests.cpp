#include "desktop/program/Invocation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Invocation, withoutADisplayAndWithoutAWishRendersPictures) {
    const fakes::FakeHost fake;
    EXPECT_EQ(Invocation::of({}, false).picturesFolder(*fake.host.preferences), "pictures");
    EXPECT_EQ(Invocation::of({}, true).picturesFolder(*fake.host.preferences), "");
    EXPECT_EQ(Invocation::of({"-openInterval", "2"}, false).picturesFolder(*fake.host.preferences), "");
}

TEST(Invocation, rendersIntoTheFolderThatThePreferenceNames) {
    fakes::FakeHost fake;
    fake.world->preferences["renderSnapshots"] = std::string("out");
    EXPECT_EQ(Invocation::of({"-renderSnapshots", "out"}, true).picturesFolder(*fake.host.preferences), "out");
    fake.world->preferences["renderSnapshots"] = true;
    EXPECT_EQ(Invocation::of({}, true).picturesFolder(*fake.host.preferences), "");
}

TEST(Invocation, namesEachSwitchThatMeansNothing) {
    EXPECT_THAT(Invocation::of({"-bogus", "1", "-demo", "YES"}, true).complaints(),
                ElementsAre("tolvane: unknown switch -bogus"));
    EXPECT_THAT(Invocation::of({"-demo", "YES"}, true).complaints(), IsEmpty());
}

TEST(Invocation, takesFilesToOpenFromTheCommandLine) {
    const auto start = Invocation::of({"one.tolvanerules", "-demo", "YES", "nothing.txt"}, true, "/home/ada");
    EXPECT_THAT(start.files.paths, ElementsAre("/home/ada/one.tolvanerules"));
    EXPECT_THAT(start.complaints(), ElementsAre("tolvane: no file nothing.txt"));
    EXPECT_EQ(Invocation::of({"one.tolvanerules"}, false).picturesFolder(*fakes::FakeHost().host.preferences), "");
}

}  // namespace
}  // namespace tolvane::desktop
