#include "core/projects/Run.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

struct RunTest : ::testing::Test {
    fakes::FakeHost fake;
    std::optional<std::string> output(const std::string& bytes) {
        fake.world->childOutput["/bin/tool a b"] = bytes;
        return run(*fake.host.children, "/bin/tool", {"a", "b"});
    }
};

TEST_F(RunTest, givesWhatTheToolPrinted) { EXPECT_EQ(output("pr\xc3\xbc"), "pr\xc3\xbc"); }

TEST_F(RunTest, repairsWhatIsNoText) {
    EXPECT_EQ(output("a\xff"
                     "b"),
              "a\xef\xbf\xbd"
              "b");
}

TEST_F(RunTest, nothingPrintedIsAnEmptyText) { EXPECT_EQ(output(""), ""); }

TEST_F(RunTest, aToolThatCannotRunGivesNone) { EXPECT_EQ(run(*fake.host.children, "/bin/tool", {}), std::nullopt); }

}  // namespace
}  // namespace tolvane
