#include "desktop/StartUp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(StartUp, withoutADisplayAndWithoutAWishRendersPictures) {
    const fakes::FakeHost fake;
    EXPECT_EQ(StartUp::of({}, false).picturesFolder(*fake.host.preferences), "pictures");
    EXPECT_EQ(StartUp::of({}, true).picturesFolder(*fake.host.preferences), "");
    EXPECT_EQ(StartUp::of({"-openInterval", "2"}, false).picturesFolder(*fake.host.preferences), "");
}

TEST(StartUp, rendersIntoTheFolderThatThePreferenceNames) {
    fakes::FakeHost fake;
    fake.world->preferences["renderSnapshots"] = std::string("out");
    EXPECT_EQ(StartUp::of({"-renderSnapshots", "out"}, true).picturesFolder(*fake.host.preferences), "out");
    fake.world->preferences["renderSnapshots"] = true;
    EXPECT_EQ(StartUp::of({}, true).picturesFolder(*fake.host.preferences), "");
}

TEST(StartUp, namesEachSwitchThatMeansNothing) {
    EXPECT_THAT(StartUp::of({"-bogus", "1", "-demo", "YES"}, true).complaints(),
                ElementsAre("tolvane: unknown switch -bogus"));
    EXPECT_THAT(StartUp::of({"-demo", "YES"}, true).complaints(), IsEmpty());
}

TEST(StartUp, takesFilesToOpenFromTheCommandLine) {
    const auto start = StartUp::of({"one.tolvanerules", "-demo", "YES", "nothing.txt"}, true, "/home/ada");
    EXPECT_THAT(start.files.paths, ElementsAre("/home/ada/one.tolvanerules"));
    EXPECT_THAT(start.complaints(), ElementsAre("tolvane: no file nothing.txt"));
    EXPECT_EQ(StartUp::of({"one.tolvanerules"}, false).picturesFolder(*fakes::FakeHost().host.preferences), "");
}

}  // namespace
}  // namespace tolvane::desktop
