#include "core/projects/ToolOutput.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

struct ToolOutputTest : ::testing::Test {
    fakes::FakeHost fake;
    std::optional<std::string> output(const std::string& bytes) {
        fake.world->childOutput["/bin/tool a b"] = bytes;
        return toolOutput(*fake.host.children, "/bin/tool", {"a", "b"});
    }
};

TEST_F(ToolOutputTest, givesWhatTheToolPrinted) { EXPECT_EQ(output("pr\xc3\xbc"), "pr\xc3\xbc"); }

TEST_F(ToolOutputTest, repairsWhatIsNoText) {
    EXPECT_EQ(output("a\xff"
                     "b"),
              "a\xef\xbf\xbd"
              "b");
}

TEST_F(ToolOutputTest, nothingPrintedIsAnEmptyText) { EXPECT_EQ(output(""), ""); }

TEST_F(ToolOutputTest, aToolThatCannotRunGivesNone) {
    EXPECT_EQ(toolOutput(*fake.host.children, "/bin/tool", {}), std::nullopt);
}

}  // namespace
}  // namespace tolvane
