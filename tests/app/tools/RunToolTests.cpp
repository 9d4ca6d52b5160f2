#include "app/tools/Tools.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

struct RunTool : ::testing::Test {
    fakes::FakeHost fake;
    std::optional<std::string> output(const std::string& bytes) {
        fake.world->tools["tool"] = "/bin/tool";
        fake.world->childOutput["/bin/tool a b"] = bytes;
        return Tools::run(*fake.host.children, "tool", {"a", "b"});
    }
};

TEST_F(RunTool, givesWhatTheToolPrinted) { EXPECT_EQ(output("pr\xc3\xbc"), "pr\xc3\xbc"); }

TEST_F(RunTool, repairsWhatIsNoText) {
    EXPECT_EQ(output("a\xff"
                     "b"),
              "a\xef\xbf\xbd"
              "b");
}

TEST_F(RunTool, nothingPrintedIsAnEmptyText) { EXPECT_EQ(output(""), ""); }

TEST_F(RunTool, aToolThatCannotRunGivesNone) {
    fake.world->tools["tool"] = "/bin/tool";
    EXPECT_EQ(Tools::run(*fake.host.children, "tool", {}), std::nullopt);
}

TEST_F(RunTool, aToolThatIsNotThereIsNotRun) {
    EXPECT_EQ(Tools::run(*fake.host.children, "tool", {}), std::nullopt);
    EXPECT_TRUE(fake.world->asked.empty());
}

}  // namespace
}  // namespace tolvane
