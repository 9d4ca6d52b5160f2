#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/storage/Store.h"

#include "tests/app/ProjectScene.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ProjectActs : ProjectScene {
    void stop(const ProjectGroup& group) { static_cast<void>(model->acts().stop(group)); }
    void park(const std::string& root) { static_cast<void>(model->acts().park(group(root))); }
    void startAgain(const ParkedProject& project) { static_cast<void>(model->startAgain(project)); }
    void refresh() { static_cast<void>(model->refreshProjects()); }
    /// Longer than any wait for a process to end.
    void settle() { clock.advance(Seconds{12}); }

    ParkedProject parkedShop(std::vector<ParkedCommand> commands, std::vector<std::string> containers = {}) const {
        return {.root = shop, .date = clock.now(), .commands = std::move(commands), .containers = containers};
    }
    ParkedCommand command(const std::string& executable, std::vector<std::string> args) const {
        return {.executable = executable, .args = std::move(args), .env = {"A=1"}, .cwd = shop};
    }
    std::vector<std::string> startedPrograms() const {
        std::vector<std::string> programs;
        for (const auto& each : world.started) programs.push_back(each.executable);
        return programs;
    }
};

// Stop.

TEST_F(ProjectActs, stopEndsEveryProcessOfTheProjectAndNoOther) {
    start();
    stop(group(shop));
    settle();
    EXPECT_EQ(world.find(11), nullptr);
    EXPECT_EQ(world.find(12), nullptr);
    EXPECT_EQ(world.find(13), nullptr);
    EXPECT_NE(world.find(21), nullptr);
    EXPECT_THAT(*model->parked, IsEmpty());
}

TEST_F(ProjectActs, whoLooksOnSeesAtOnceWhatStopped) {
    start();
    world.showWindow(true);
    const auto before = ticks();
    stop(group(shop));
    clock.advance(Seconds{1});
    EXPECT_GT(ticks(), before);
    EXPECT_TRUE(group(shop).rows.empty());
}

TEST_F(ProjectActs, withoutAWindowTheNextSampleComesInItsTime) {
    start();
    const auto before = ticks();
    stop(group(shop));
    clock.advance(Seconds{11});
    EXPECT_EQ(ticks(), before);
}

TEST_F(ProjectActs, stopKillsWhatIgnoresTheSignal) {
    world.find(12)->endsAfter.reset();
    start();
    stop(group(shop));
    EXPECT_EQ(world.timesAsked("signal 15 12"), 1U);
    settle();
    EXPECT_EQ(world.timesAsked("signal 9 12"), 1U);
    EXPECT_EQ(world.find(12), nullptr);
}

TEST_F(ProjectActs, stopSparesWhoTookANumberMeanwhile) {
    start();
    const auto asked = group(shop);
    world.find(12)->bsd->startTime = clock.now();
    clock.advance(Seconds{60});
    stop(asked);
    settle();
    EXPECT_NE(world.find(12), nullptr);
    EXPECT_EQ(world.find(11), nullptr);
}

TEST_F(ProjectActs, stopStopsTheProjectsContainersAndForgetsThemAtOnce) {
    runEngine();
    answer("stop c1");
    start();
    refresh();
    ASSERT_EQ(model->containers->size(), 2U);
    stop(group(shop));
    settle();
    EXPECT_EQ(clientRuns("stop c1"), 1U);
    EXPECT_THAT(*model->containers, ElementsAre(Container{.id = "c2", .name = "lone", .workingDir = std::nullopt}));
}

TEST_F(ProjectActs, aFailedStopOfContainersIsSilent) {
    runEngine();
    start();
    refresh();
    stop(group(shop));
    settle();
    EXPECT_EQ(clientRuns("stop c1"), 1U);
    EXPECT_EQ(model->containers->size(), 1U);
    EXPECT_THAT(world.notifications, IsEmpty());
    refresh();
    EXPECT_EQ(model->containers->size(), 2U) << "the next look shows it again";
}

TEST_F(ProjectActs, stopWithoutContainersNeedsNoClient) {
    world.tools["docker"] = client;
    start();
    stop(group(shop));
    settle();
    EXPECT_EQ(clientRuns("stop"), 0U);
}

// Park.

TEST_F(ProjectActs, parkRemembersTheTopOfEachTree) {
    start();
    park(shop);
    ASSERT_EQ(model->parked->size(), 1U);
    const auto& parked = model->parked->front();
    EXPECT_EQ(parked.root, shop);
    EXPECT_EQ(parked.date, clock.now());
    EXPECT_THAT(
        parked.commands,
        ElementsAre(ParkedCommand{
            .executable = "/opt/npm", .args = {"npm", "run", "dev"}, .env = {"PORT=3000", "SECRET=s3"}, .cwd = shop}));
    EXPECT_THAT(parked.containers, IsEmpty());
}

TEST_F(ProjectActs, parkWritesFirstAndStopsThen) {
    start();
    park(shop);
    const auto saved = model->store().loadParked();
    EXPECT_EQ(saved, *model->parked);
    settle();
    EXPECT_EQ(world.find(11), nullptr);
    EXPECT_EQ(world.find(13), nullptr);
}

TEST_F(ProjectActs, parkRemembersTheProjectsContainers) {
    runEngine();
    answer("stop c1");
    start();
    refresh();
    park(shop);
    EXPECT_THAT(model->parked->front().containers, ElementsAre("c1"));
    settle();
    EXPECT_EQ(clientRuns("stop c1"), 1U);
}

TEST_F(ProjectActs, aProcessWithoutAFolderIsStartedInTheProjects) {
    start();
    auto asked = group(shop);
    asked.rows.front().sample.cwd.reset();
    static_cast<void>(model->acts().park(asked));
    EXPECT_EQ(model->parked->front().commands.front().cwd, shop);
}

TEST_F(ProjectActs, anEnvironmentThatCannotBeReadIsEmpty) {
    start();
    auto asked = group(shop);
    world.find(11)->environment.reset();
    static_cast<void>(model->acts().park(asked));
    EXPECT_THAT(model->parked->front().commands.front().env, IsEmpty());
    EXPECT_THAT(model->parked->front().commands.front().args, ElementsAre("npm", "run", "dev"));
}

TEST_F(ProjectActs, whoTookANumberMeanwhileKeepsItsSecrets) {
    start();
    auto asked = group(shop);
    world.find(11)->bsd->startTime = clock.now();
    static_cast<void>(model->acts().park(asked));
    EXPECT_THAT(model->parked->front().commands.front().env, IsEmpty());
}

TEST_F(ProjectActs, parkingAgainReplacesTheEntryAndMovesItUp) {
    start();
    park(shop);
    clock.advance(Seconds{100});
    park(blog);
    ASSERT_EQ(model->parked->size(), 2U);
    EXPECT_EQ(model->parked->front().root, blog);
    add(31, 1, "node", shop, {"node", "again.js"}, {});
    clock.advance(Seconds{100});
    park(shop);
    ASSERT_EQ(model->parked->size(), 2U);
    EXPECT_EQ(model->parked->front().root, shop);
    EXPECT_EQ(model->parked->front().date, clock.now());
    EXPECT_EQ(model->parked->front().commands.front().args.back(), "again.js");
    EXPECT_EQ(model->parked->back().root, blog);
}

TEST_F(ProjectActs, whatIsParkedIsForItsOwnersEyesOnly) {
    start();
    park(shop);
    struct stat status{};
    ASSERT_EQ(::stat((model->store().directory + "/parked.json").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    for (const auto& line : world.logLines) EXPECT_EQ(line.find("s3"), std::string::npos);
}

// Start Again.

TEST_F(ProjectActs, startAgainStartsEachCommandAsItWas) {
    start();
    startAgain(parkedShop({command("/opt/npm", {"npm", "run", "dev"}), command("/opt/tool", {})}));
    ASSERT_EQ(world.started.size(), 2U);
    EXPECT_EQ(world.started[0], (DetachedStart{.executable = "/opt/npm",
                                               .args = {"npm", "run", "dev"},
                                               .environment = {"A=1"},
                                               .workingDirectory = shop,
                                               .log = home + "/Library/Logs/Tolvane/shop.log"}));
    EXPECT_THAT(world.started[1].args, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_directory(home + "/Library/Logs/Tolvane"));
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(ProjectActs, startAgainForgetsTheEntry) {
    start();
    park(shop);
    park(blog);
    startAgain(model->parked->back());
    ASSERT_EQ(model->parked->size(), 1U);
    EXPECT_EQ(model->parked->front().root, blog);
    EXPECT_EQ(model->store().loadParked(), *model->parked);
}

TEST_F(ProjectActs, startAgainOfNothingAsksNobody) {
    world.tools["docker"] = client;
    start();
    modelState->parked.set({parkedShop({})});
    startAgain(parkedShop({}));
    EXPECT_THAT(world.started, IsEmpty());
    EXPECT_EQ(clientRuns("start"), 0U);
    EXPECT_THAT(*model->parked, IsEmpty());
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(ProjectActs, oneThatDoesNotStartLeavesTheOthersRunning) {
    world.unstartable.insert("/opt/gone");
    start();
    const auto project = parkedShop(
        {command("/opt/a", {"a"}), command("/opt/gone", {"gone", "--now"}), command("/opt/b", {"b"})}, {"c1"});
    modelState->parked.set({project});
    startAgain(project);
    EXPECT_THAT(startedPrograms(), ElementsAre("/opt/a", "/opt/b"));
    EXPECT_THAT(*model->parked, IsEmpty());
    ASSERT_EQ(world.notifications.size(), 1U);
    EXPECT_EQ(world.notifications[0].title, "Could not start all of shop");
    EXPECT_EQ(world.notifications[0].body,
              "gone did not start. Output goes to " + home + "/Library/Logs/Tolvane/shop.log.");
    EXPECT_EQ(world.notifications[0].section, std::nullopt);
}

TEST_F(ProjectActs, thoseThatDoNotStartAreListedByName) {
    world.unstartable = {"/opt/a", "/opt/b", "/opt/c"};
    start();
    startAgain(parkedShop({command("/opt/a", {"a", "x"}), command("/opt/b", {}), command("/opt/c", {"c"})}));
    EXPECT_EQ(world.notifications.at(0).body,
              "a, /opt/b, and c did not start. Output goes to " + home + "/Library/Logs/Tolvane/shop.log.");
}

TEST_F(ProjectActs, startAgainStartsTheContainersAfterTheCommands) {
    runEngine();
    answer("start c1 c9");
    start();
    startAgain(parkedShop({command("/opt/a", {"a"})}, {"c1", "c9"}));
    EXPECT_EQ(clientRuns("start c1 c9"), 1U);
    const auto at = [&](const std::string& question) { return std::ranges::find(world.asked, question); };
    EXPECT_LT(at("start /opt/a"), at("run " + std::string(client) + " start c1 c9"));
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(ProjectActs, containersThatDoNotStartAreTold) {
    start();
    modelState->parked.set({parkedShop({}, {"c1"})});
    startAgain(parkedShop({}, {"c1"}));
    EXPECT_EQ(world.notifications.at(0).title, "Could not start all of shop");
    EXPECT_EQ(world.notifications.at(0).body, "Docker did not start its containers.");
    EXPECT_THAT(*model->parked, IsEmpty());
}

TEST_F(ProjectActs, projectsOfOneFolderNameShareALog) {
    start();
    EXPECT_EQ(model->acts().projectLog(shop), home + "/Library/Logs/Tolvane/shop.log");
    EXPECT_EQ(model->acts().projectLog(home + "/old/shop"), model->acts().projectLog(shop));
    EXPECT_EQ(model->acts().projectLog("/srv/a b.c/"), home + "/Library/Logs/Tolvane/a b.c.log");
}

// A client that hangs.

struct HangingClient : ProjectActs {
    fakes::HeldJobs jobs;
    HangingClient() {
        runEngine();
        answer("stop c1");
        start(jobs.factory());
        jobs.runAll();
        refresh();
        jobs.runAll();
    }
};

TEST_F(HangingClient, doesNotHoldUpTheProcessesEnd) {
    stop(group(shop));
    settle();
    EXPECT_EQ(world.find(11), nullptr);
    EXPECT_EQ(clientRuns("stop c1"), 0U);
    EXPECT_EQ(model->containers->size(), 2U);
    jobs.runAll();
    EXPECT_EQ(clientRuns("stop c1"), 1U);
    EXPECT_EQ(model->containers->size(), 1U);
}

TEST_F(HangingClient, anEndDuringTheWaitIsQuiet) {
    stop(group(shop));
    settle();
    startAgain(parkedShop({}, {"c1"}));
    model.reset();
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(ProjectActs, anEndDuringTheWaitForProcessesIsQuiet) {
    world.find(12)->endsAfter.reset();
    start();
    park(shop);
    clock.advance(Seconds{1});
    model.reset();
    EXPECT_EQ(clock.waiting(), 0U);
}

}  // namespace
}  // namespace tolvane
