#include <gmock/gmock.h>

#include "tests/app/ProjectScene.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

struct RefreshProjects : ProjectScene {
    void refresh() { static_cast<void>(model->refreshProjects()); }
    void upstreamIsGone(const std::string& root, const std::string& branch, const std::string& printed = "[gone]\n") {
        world.childOutput["/usr/bin/git -C " + root + " for-each-ref --format=%(upstream:track) refs/heads/" + branch] =
            printed;
    }
    std::size_t gitRuns(const std::string& root) const {
        std::size_t runs = 0;
        for (const auto& each : world.asked) runs += each.starts_with("run /usr/bin/git -C " + root) ? 1 : 0;
        return runs;
    }
};

TEST_F(RefreshProjects, readsContainersBranchesAndPorts) {
    world.find(12)->ports = {5173, 3000, 5173};
    runEngine();
    upstreamIsGone(blog, "draft");
    start();
    EXPECT_THAT(*model->branches, IsEmpty());
    refresh();
    EXPECT_THAT(*model->containers,
                ElementsAre(shopContainer, Container{.id = "c2", .name = "lone", .workingDir = std::nullopt}));
    EXPECT_THAT(*model->branches,
                UnorderedElementsAre(
                    Pair(shop, ProjectBranch{.state = {.branch = "main", .deleted = false}, .remoteGone = false}),
                    Pair(blog, ProjectBranch{.state = {.branch = "draft", .deleted = false}, .remoteGone = true})));
    EXPECT_EQ(model->ports->at(12), (std::vector<int>{3000, 5173}));
    EXPECT_THAT(model->ports->at(11), IsEmpty());
    EXPECT_EQ(model->ports->size(), 4U);
}

TEST_F(RefreshProjects, asksForKeptServicesAnew) {
    start();
    world.managedPIDs = {21};
    clock.advance(Seconds{10});
    refresh();
    EXPECT_THAT(*model->servicePIDs, ElementsAre(21));
    EXPECT_EQ(*model->servicesChecked, clock.now());
    EXPECT_THAT(*model->branches, ElementsAre(Pair(shop, ::testing::_))) << "what is kept is in no group";
}

TEST_F(RefreshProjects, forgetsProjectsThatRunNoMore) {
    start();
    refresh();
    EXPECT_EQ(model->branches->size(), 2U);
    world.end(21);
    clock.advance(Seconds{60});
    refresh();
    EXPECT_THAT(*model->branches, ElementsAre(Pair(shop, ::testing::_)));
    EXPECT_FALSE(model->ports->contains(21));
}

TEST_F(RefreshProjects, doesNotAskGitOfADetachedOrDeletedBranch) {
    folder.write("home/shop/.git/HEAD", "9a4f1c5b8d1e2f3a4b5c6d7e8f901234567890ab\n");
    folder.write("home/blog/.git/HEAD", "ref: refs/heads/gone\n");
    upstreamIsGone(blog, "gone");
    start();
    refresh();
    EXPECT_EQ(model->branches->at(shop), ProjectBranch{});
    EXPECT_EQ(model->branches->at(blog),
              (ProjectBranch{.state = {.branch = "gone", .deleted = true}, .remoteGone = false}));
    EXPECT_EQ(gitRuns(shop), 0U);
    EXPECT_EQ(gitRuns(blog), 0U);
}

TEST_F(RefreshProjects, withoutToolsTheAnswersAreTheEmptiest) {
    start();
    refresh();
    EXPECT_THAT(*model->containers, IsEmpty());
    EXPECT_FALSE(model->branches->at(shop).remoteGone);
}

TEST_F(RefreshProjects, tellsObserversOfChangesAlone) {
    runEngine();
    start();
    refresh();
    int changes = 0;
    const auto count = [&] { ++changes; };
    const auto containers = model->containers.onChange(count);
    const auto ports = model->ports.onChange(count);
    const auto kept = model->servicePIDs.onChange(count);
    refresh();
    EXPECT_EQ(changes, 0);
}

TEST_F(RefreshProjects, leavesTheDemoAsItIs) {
    startDemo();
    const auto before = *model->containers;
    const auto asked = world.asked.size();
    refresh();
    EXPECT_EQ(*model->containers, before);
    EXPECT_EQ(world.asked.size(), asked);
}

TEST_F(RefreshProjects, publishesOnceEverythingIsRead) {
    fakes::HeldJobs jobs;
    runEngine();
    start(jobs.factory());
    jobs.runAll();
    refresh();
    ASSERT_EQ(jobs.waiting(), 1U);
    jobs.runNext();
    EXPECT_THAT(*model->containers, IsEmpty());
    ASSERT_EQ(jobs.waiting(), 1U);
    jobs.runNext();
    EXPECT_EQ(model->containers->size(), 2U);
}

TEST_F(RefreshProjects, anEndInBetweenIsQuiet) {
    fakes::HeldJobs jobs;
    start(jobs.factory());
    jobs.runAll();
    refresh();
    jobs.runNext();
    refresh();
    model.reset();
    EXPECT_TRUE(world.childrenEnded);
    EXPECT_EQ(jobs.waiting(), 0U);
}

}  // namespace
}  // namespace tolvane
