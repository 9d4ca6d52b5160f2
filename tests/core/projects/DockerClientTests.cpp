#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/projects/Docker.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string home = "/home/ada";

struct DockerClient : ::testing::Test {
    fakes::FakeHost fake;
    fakes::FakeWorld& world = *fake.world;
    ChildProcesses& children = *fake.host.children;

    std::optional<std::string> executable() { return Docker::executable(children, home); }
    std::vector<Container> running() { return Docker::running(children, home); }
    bool perform(const std::vector<std::string>& ids) { return Docker::perform(children, home, "stop", ids); }
};

TEST_F(DockerClient, isTheFirstOfItsPlaces) {
    world.containerClients = {"/usr/bin/docker"};
    EXPECT_EQ(executable(), std::nullopt);
    for (const char* path : {"/usr/bin/docker", "/Applications/Docker.app/Contents/Resources/bin/docker",
                             "/home/ada/.orbstack/bin/docker", "/opt/homebrew/bin/docker", "/usr/local/bin/docker"}) {
        world.executables.insert(path);
        EXPECT_EQ(executable(), path);
    }
}

TEST_F(DockerClient, isFoundOnceItIsInstalled) {
    EXPECT_THAT(running(), IsEmpty());
    EXPECT_THAT(world.asked, IsEmpty());
    world.executables.insert("/usr/local/bin/docker");
    world.childOutput["/usr/local/bin/docker ps --format {{json .}}"] = "{\"ID\":\"c1\"}\n";
    EXPECT_THAT(running(), ElementsAre(Container{.id = "c1", .name = "c1", .workingDir = std::nullopt}));
}

TEST_F(DockerClient, thatFailsTellsOfNoContainers) {
    world.executables.insert("/usr/local/bin/docker");
    EXPECT_THAT(running(), IsEmpty());
    EXPECT_EQ(world.timesAsked("run /usr/local/bin/docker ps --format {{json .}}"), 1U);
}

TEST_F(DockerClient, isNotAskedToActOnNothing) {
    EXPECT_TRUE(perform({}));
    EXPECT_THAT(world.asked, IsEmpty());
}

TEST_F(DockerClient, actsOnAllInOneCall) {
    world.executables.insert("/opt/homebrew/bin/docker");
    world.childOutput["/opt/homebrew/bin/docker stop c1 c2"] = "c1\nc2\n";
    EXPECT_TRUE(perform({"c1", "c2"}));
    EXPECT_THAT(world.asked, ElementsAre("run /opt/homebrew/bin/docker stop c1 c2"));
}

TEST_F(DockerClient, thatIsMissingOrFailsDidNothing) {
    EXPECT_FALSE(perform({"c1"}));
    world.executables.insert("/opt/homebrew/bin/docker");
    EXPECT_FALSE(perform({"c1"}));
}

}  // namespace
}  // namespace tolvane
