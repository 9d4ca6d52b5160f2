#include <gtest/gtest.h>

#include "app/tools/Tools.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

struct RemoteGone : ::testing::Test {
    fakes::FakeHost fake;
    bool after(const std::string& printed) {
        fake.world->childOutput
            ["/usr/bin/git -C /home/ada/shop for-each-ref --format=%(upstream:track) "
             "refs/heads/feature/x"] = printed;
        return Tools::remoteGone(*fake.host.children, "/home/ada/shop", "feature/x");
    }
};

TEST_F(RemoteGone, holdsWhenGitSaysSo) { EXPECT_TRUE(after("[gone]\n")); }

TEST_F(RemoteGone, doesNotHoldOtherwise) {
    EXPECT_FALSE(after("[ahead 1]\n"));
    EXPECT_FALSE(after("\n"));
    EXPECT_FALSE(after(""));
}

TEST_F(RemoteGone, doesNotHoldWithoutGit) {
    EXPECT_FALSE(Tools::remoteGone(*fake.host.children, "/home/ada/shop", "feature/x"));
}

}  // namespace
}  // namespace tolvane
