#include "app/screens/projects/ProjectsView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/ProjectScene.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Date noon{Seconds{800'000'000}};

/// Rows built from plain values, without a model.
struct ProjectRows : ::testing::Test {
    static ProcRow row(Pid pid, const std::vector<std::string>& args = {"node"}) {
        auto made = fakes::row(pid, "node");
        const std::vector<std::string_view> views(args.begin(), args.end());
        made.sample.args = TextList(views);
        made.unusedSince = noon;
        return made;
    }
    static ProjectGroup group(std::vector<ProcRow> rows) { return {.root = "/home/ada/shop", .rows = std::move(rows)}; }
    static std::vector<Container> containers(std::size_t count) {
        std::vector<Container> all = {{.id = "elsewhere", .name = "x", .workingDir = "/home/ada/shopping"}};
        for (std::size_t number = 0; number < count; ++number) {
            all.push_back({.id = std::to_string(number), .name = "c", .workingDir = "/home/ada/shop"});
        }
        return all;
    }
    static std::string details(const ProjectGroup& group, const std::map<Pid, std::vector<int>>& ports = {},
                               std::size_t containerCount = 0) {
        return ProjectRow::details(group, ports, containers(containerCount), "en_US");
    }
    static std::string figure(const ProjectGroup& group, std::size_t index) {
        return ProjectRow::figuresOf(group, noon, "en_US").at(index).value;
    }
};

TEST_F(ProjectRows, tellOfProcessesContainersAndPorts) {
    EXPECT_EQ(details(group({row(1)})), "1 process");
    EXPECT_EQ(details(group({row(1), row(2)})), "2 processes");
    EXPECT_EQ(details(group({row(1)}), {}, 1), "1 process, 1 container");
    EXPECT_EQ(details(group({row(1)}), {}, 2), "1 process, 2 containers");
    EXPECT_EQ(details(group({row(1)}), {{1, {3000}}}), "1 process, port 3000");
    EXPECT_EQ(details(group({row(1), row(2), row(3)}), {{1, {6379}}, {2, {3000}}}, 2),
              "3 processes, 2 containers, ports 3000 and 6379");
}

TEST_F(ProjectRows, tellOfEachPortOnceAndInOrder) {
    EXPECT_EQ(details(group({row(1), row(2)}), {{1, {8080, 443}}, {2, {443, 80}}, {9, {22}}}),
              "2 processes, ports 80, 443, and 8080");
    EXPECT_EQ(details(group({row(1)}), {{1, {}}}), "1 process");
}

TEST_F(ProjectRows, aDeletedBranchIsMarkedBeforeAGoneUpstream) {
    const ProjectMark deleted{.icon = "exclamationmark.triangle", .text = "Branch deleted, safe to stop"};
    const ProjectMark gone{.icon = "arrow.triangle.merge", .text = "Remote branch gone, probably merged"};
    EXPECT_EQ(ProjectRow::markOf({.state = {.branch = "x", .deleted = true}, .remoteGone = true}), deleted);
    EXPECT_EQ(ProjectRow::markOf({.state = {.branch = "x", .deleted = true}}), deleted);
    EXPECT_EQ(ProjectRow::markOf({.state = {.branch = "x"}, .remoteGone = true}), gone);
    EXPECT_EQ(ProjectRow::markOf({.state = {.branch = "x"}}), std::nullopt);
    EXPECT_EQ(ProjectRow::markOf({}), std::nullopt);
}

TEST_F(ProjectRows, sumTheirFigures) {
    auto first = row(1);
    auto second = row(2);
    first.sample.footprint = 400ULL << 20U;
    second.sample.footprint = 112ULL << 20U;
    first.cpuPercent = 30;
    second.cpuPercent = 10;
    first.unusedSince = noon - Seconds{7200};
    second.unusedSince = noon - Seconds{38 * 60};
    const auto figures = ProjectRow::figuresOf(group({first, second}), noon, "en_US");
    EXPECT_THAT(figures, ElementsAre(ProjectFigure{.title = "Memory", .value = "512 MB"},
                                     ProjectFigure{.title = "CPU", .value = "0.4 cores"},
                                     ProjectFigure{.title = "Unused", .value = "38m"}));
}

TEST_F(ProjectRows, areIdleBelowATenthOfACore) {
    auto busy = row(1);
    busy.cpuPercent = 9.9;
    EXPECT_EQ(figure(group({busy}), 1), "Idle");
    busy.cpuPercent = 10.0;
    EXPECT_EQ(figure(group({busy}), 1), "0.1 cores");
}

TEST_F(ProjectRows, theParkMessageTellsWhatStopsAndWhatComesBack) {
    auto child = row(12, {"esbuild", "--service"});
    child.sample.ppid = 11;
    const auto message = [](const ProjectGroup& group, std::size_t containerCount) {
        return ProjectsView::parkMessage(group, group.rows, containers(containerCount), "en_US");
    };
    EXPECT_EQ(message(group({row(11, {"npm", "run", "dev", "--", "--host"}), child, row(13, {"hugo"})}), 2),
              "Stops 3 processes and 2 containers. Start Again runs npm run dev and hugo in the same folder with the "
              "same environment.");
    EXPECT_EQ(message(group({row(11, {"npm", "start"})}), 1),
              "Stops 1 process and 1 container. Start Again runs npm start in the same folder with the same "
              "environment.");
    EXPECT_EQ(message(group({row(11, {"npm"})}), 0),
              "Stops 1 process. Start Again runs npm in the same folder with the same environment.");
}

TEST(ProjectsViewTexts, countProjects) {
    EXPECT_EQ(ProjectsView::subtitle(0), "0 projects running");
    EXPECT_EQ(ProjectsView::subtitle(1), "1 project running");
    EXPECT_EQ(ProjectsView::subtitle(4), "4 projects running");
}

TEST(ProjectsViewTexts, theFooterCountsWhatIsLeftOut) {
    EXPECT_EQ(ProjectsView::runningFooter({}), "");
    EXPECT_EQ(ProjectsView::runningFooter({{.root = "/a"}}), "");
    EXPECT_EQ(ProjectsView::runningFooter({{.root = "/a", .leftAlone = 1}}),
              "1 process from AI agents, Claude sessions or launchd agents is left out, so Stop and Park never touch "
              "them.");
    EXPECT_EQ(ProjectsView::runningFooter({{.root = "/a", .leftAlone = 1}, {.root = "/b", .leftAlone = 2}}),
              "3 processes from AI agents, Claude sessions or launchd agents are left out, so Stop and Park never "
              "touch them.");
}

TEST(ProjectsViewTexts, areTheOnesThatPeopleKnow) {
    EXPECT_EQ(ProjectsView::empty,
              (EmptyText{.title = "No Projects Running",
                         .sentence = "A project shows up here when a process runs in a folder inside a git repository.",
                         .icon = "folder"}));
    EXPECT_EQ(ProjectsView::parkedFooter,
              "Start Again runs each command with the folder and environment it had, and writes its output to "
              "~/Library/Logs/Tolvane.");
    EXPECT_EQ(ProjectsView::parkTooltip, "Stop everything in this project and remember how to start it again");
}

struct ProjectsViewTest : ProjectScene {
    std::optional<ProjectsView> view;

    void open() {
        start();
        view.emplace(*model, "en_US", "UTC");
    }
    void parkShop() {
        modelState->parked.set(
            {{.root = shop,
              .date = clock.now() - Seconds{86'400},
              .commands = {{.executable = "/opt/npm", .args = {"npm", "run", "dev"}, .env = {}, .cwd = shop},
                           {.executable = "/opt/tool", .args = {}, .env = {}, .cwd = shop}},
              .containers = {"c1", "c2"}}});
    }
    const ProjectGroup& running(std::size_t index) { return (groups = view->content().running).at(index).project; }
    std::vector<ProjectRow> groups;
};

TEST_F(ProjectsViewTest, showsProjectsLargestFirst) {
    open();
    const auto content = view->content();
    EXPECT_EQ(content.subtitle, "2 projects running");
    ASSERT_EQ(content.running.size(), 2U);
    EXPECT_EQ(content.running[0].title, "shop");
    EXPECT_EQ(content.running[0].detail, "3 processes");
    EXPECT_EQ(content.running[0].branch, "") << "nobody looked yet";
    EXPECT_EQ(content.running[1].title, "blog");
    EXPECT_EQ(content.runningFooter, "");
    EXPECT_THAT(content.parked, IsEmpty());
    EXPECT_FALSE(content.isEmpty());
}

TEST_F(ProjectsViewTest, showsWhatWasReadOfABranch) {
    open();
    modelState->branches.set({{shop, {.state = {.branch = "feature/checkout"}, .remoteGone = true}}});
    const auto content = view->content();
    EXPECT_EQ(content.running[0].branch, "feature/checkout");
    EXPECT_EQ(content.running[0].mark->text, "Remote branch gone, probably merged");
    EXPECT_EQ(content.running[1].branch, "");
    EXPECT_EQ(content.running[1].mark, std::nullopt);
}

TEST_F(ProjectsViewTest, aDetachedHeadHasNeitherBranchNorMark) {
    open();
    modelState->branches.set({{shop, {}}});
    EXPECT_EQ(view->content().running[0].branch, "");
    EXPECT_EQ(view->content().running[0].mark, std::nullopt);
}

TEST_F(ProjectsViewTest, withoutProjectsItIsEmpty) {
    world.processes.clear();
    open();
    EXPECT_TRUE(view->content().isEmpty());
    EXPECT_EQ(view->content().subtitle, "0 projects running");
}

TEST_F(ProjectsViewTest, aParkedProjectAloneIsNoEmptyScreen) {
    world.processes.clear();
    open();
    parkShop();
    const auto content = view->content();
    EXPECT_FALSE(content.isEmpty());
    EXPECT_THAT(content.running, IsEmpty());
    ASSERT_EQ(content.parked.size(), 1U);
    EXPECT_EQ(content.parked[0].title, "shop");
    EXPECT_EQ(content.parked[0].when, "Parked yesterday");
    EXPECT_THAT(content.parked[0].commands, ElementsAre("npm run dev", "/opt/tool"));
    EXPECT_EQ(content.parked[0].containers, "2 containers");
}

TEST_F(ProjectsViewTest, offersALogOnceThereIsOne) {
    open();
    parkShop();
    EXPECT_FALSE(view->content().parked[0].hasLog);
    folder.write("home/Library/Logs/Tolvane/shop.log", "");
    EXPECT_TRUE(view->content().parked[0].hasLog);
    view->showLog(model->parked->front());
    EXPECT_THAT(world.asked, ::testing::Contains("openFile " + home + "/Library/Logs/Tolvane/shop.log"));
}

TEST_F(ProjectsViewTest, opensAProjectsFolder) {
    open();
    view->showFolder(running(0));
    EXPECT_THAT(world.asked, ::testing::Contains("openFile " + shop));
}

TEST_F(ProjectsViewTest, asksBeforeItStops) {
    open();
    EXPECT_EQ(view->stopQuestion(), std::nullopt);
    view->askStop(running(0));
    EXPECT_EQ(view->confirmStop()->root, shop);
    EXPECT_EQ(view->confirmPark(), std::nullopt);
    EXPECT_EQ(view->stopQuestion(),
              (Question{.title = "Stop everything in shop?",
                        .message = "Unsaved work in these processes will be lost. Park instead remembers how to start "
                                   "them again.",
                        .action = "Stop All"}));
    view->cancel();
    EXPECT_EQ(view->stopQuestion(), std::nullopt);
    clock.advance(Seconds{12});
    EXPECT_NE(world.find(11), nullptr);
    view->askStop(running(0));
    view->confirm();
    EXPECT_EQ(view->stopQuestion(), std::nullopt);
    clock.advance(Seconds{12});
    EXPECT_EQ(world.find(11), nullptr);
    EXPECT_THAT(*model->parked, IsEmpty());
}

TEST_F(ProjectsViewTest, asksBeforeItParks) {
    open();
    view->askPark(running(0));
    EXPECT_EQ(view->stopQuestion(), std::nullopt);
    EXPECT_EQ(view->parkQuestion(),
              (Question{.title = "Park shop?",
                        .message = "Stops 3 processes. Start Again runs npm run dev in the same folder with the same "
                                   "environment.",
                        .action = "Park"}));
    view->confirm();
    EXPECT_EQ(view->parkQuestion(), std::nullopt);
    EXPECT_EQ(model->parked->front().root, shop);
    clock.advance(Seconds{12});
    EXPECT_EQ(world.find(12), nullptr);
}

TEST_F(ProjectsViewTest, aProjectThatIsToldToStopIsShownSoUntilItHas) {
    world.find(12)->endsAfter.reset();
    open();
    EXPECT_FALSE(view->content().running.at(0).isEnding);
    view->askPark(running(0));
    view->confirm();
    EXPECT_TRUE(view->content().running.at(0).isEnding);
    EXPECT_FALSE(view->content().running.at(1).isEnding);
    clock.advance(Seconds{12});
    for (const auto& row : view->content().running) EXPECT_FALSE(row.isEnding) << row.title;
}

TEST_F(ProjectsViewTest, startsAgainAndForgets) {
    open();
    parkShop();
    view->startAgain(model->parked->front());
    EXPECT_EQ(world.started.size(), 2U);
    parkShop();
    view->forget(model->parked->front());
    EXPECT_THAT(*model->parked, IsEmpty());
    EXPECT_EQ(world.started.size(), 2U);
}

TEST_F(ProjectsViewTest, readsFactsWhileItStands) {
    open();
    const auto looks = [&] {
        return world.timesAsked("run /usr/bin/git -C " + shop +
                                " for-each-ref --format=%(upstream:track) refs/heads/main");
    };
    EXPECT_EQ(looks(), 0U);
    view->enter();
    EXPECT_EQ(looks(), 1U);
    EXPECT_EQ(view->content().running[0].branch, "main");
    clock.advance(Seconds{14});
    EXPECT_EQ(looks(), 1U);
    clock.advance(Seconds{1});
    EXPECT_EQ(looks(), 2U);
    view->leave();
    clock.advance(Seconds{60});
    EXPECT_EQ(looks(), 2U);
    view->enter();
    EXPECT_EQ(looks(), 3U);
    view.reset();
    clock.advance(Seconds{60});
    EXPECT_EQ(looks(), 3U);
}

TEST_F(ProjectsViewTest, aReadingThatHangsIsNotJoinedByAnother) {
    fakes::HeldJobs jobs;
    start(jobs.factory());
    jobs.runAll();
    view.emplace(*model, "en_US", "UTC");
    view->enter();
    view->leave();
    view->enter();
    EXPECT_EQ(jobs.waiting(), 1U);
    jobs.runAll();
    EXPECT_EQ(view->content().running[0].branch, "main");
    clock.advance(Seconds{15});
    EXPECT_EQ(jobs.waiting(), 1U) << "and then it goes on as ever";
    view.reset();
    jobs.runAll();
}

TEST_F(ProjectsViewTest, theDemoStaysAsItIs) {
    startDemo();
    view.emplace(*model, "en_US", "UTC");
    const auto before = view->content();
    view->enter();
    clock.advance(Seconds{60});
    EXPECT_EQ(view->content().running, before.running);
}

}  // namespace
}  // namespace tolvane
