#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/tools/Tools.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ContainerClient : ::testing::Test {
    fakes::FakeHost fake;
    fakes::FakeWorld& world = *fake.world;
    ChildProcesses& children = *fake.host.children;

    std::vector<Container> running() { return Tools::runningContainers(children); }
    bool perform(const std::vector<std::string>& ids) { return Tools::performOnContainers(children, "stop", ids); }
};

TEST_F(ContainerClient, isFoundOnceItIsInstalled) {
    EXPECT_THAT(running(), IsEmpty());
    EXPECT_THAT(world.asked, IsEmpty());
    world.tools["docker"] = "/usr/local/bin/docker";
    world.childOutput["/usr/local/bin/docker ps --format {{json .}}"] = "{\"ID\":\"c1\"}\n";
    EXPECT_THAT(running(), ElementsAre(Container{.id = "c1", .name = "c1", .workingDir = std::nullopt}));
}

TEST_F(ContainerClient, thatFailsTellsOfNoContainers) {
    world.tools["docker"] = "/usr/local/bin/docker";
    EXPECT_THAT(running(), IsEmpty());
    EXPECT_EQ(world.timesAsked("run /usr/local/bin/docker ps --format {{json .}}"), 1U);
}

TEST_F(ContainerClient, isNotAskedToActOnNothing) {
    EXPECT_TRUE(perform({}));
    EXPECT_THAT(world.asked, IsEmpty());
}

TEST_F(ContainerClient, actsOnAllInOneCall) {
    world.tools["docker"] = "/opt/homebrew/bin/docker";
    world.childOutput["/opt/homebrew/bin/docker stop c1 c2"] = "c1\nc2\n";
    EXPECT_TRUE(perform({"c1", "c2"}));
    EXPECT_THAT(world.asked, ElementsAre("run /opt/homebrew/bin/docker stop c1 c2"));
}

TEST_F(ContainerClient, thatIsMissingOrFailsDidNothing) {
    EXPECT_FALSE(perform({"c1"}));
    world.tools["docker"] = "/opt/homebrew/bin/docker";
    EXPECT_FALSE(perform({"c1"}));
}

}  // namespace
}  // namespace tolvane
