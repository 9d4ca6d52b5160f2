#include "app/demo/Demo.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "core/history/HistoryMath.h"
#include "core/projects/Docker.h"
#include "core/projects/Projects.h"
#include "core/storage/ActivityStats.h"
#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::SizeIs;
using testing::UnorderedElementsAre;

struct DemoTest : testing::Test {
    Date now{Seconds{801'234'567.5}};
    Demo::Place place{.home = "/home/ada", .uid = 501};
    Demo::State state = Demo::state(now, place);
    Demo::Roots folders = Demo::Roots::in(place);

    std::vector<ProjectGroup> groups() const { return Projects::groups(world(), {}); }
    World world() const {
        return {.rows = state.snapshot.rows,
                .frontmostAppID = std::nullopt,
                .claudeWorkers = state.snapshot.claude,
                .selfPID = 4242,
                .uid = place.uid,
                .memoryTight = true};
    }
    static std::vector<std::string> names(const std::vector<ProcRow>& rows) {
        std::vector<std::string> found;
        for (const auto& row : rows) found.emplace_back(row.sample.name.view());
        return found;
    }
};

}  // namespace

TEST_F(DemoTest, isTheSameWorldForTheSameDate) {
    EXPECT_EQ(Demo::state(now, place), state);
    EXPECT_EQ(Demo::advisor(now, place), Demo::advisor(now, place));
}

TEST_F(DemoTest, movesWithTheClock) { EXPECT_NE(Demo::state(now + Seconds{60}, place), state); }

TEST_F(DemoTest, hasThePlayersThatTheScreensTellOf) {
    const auto cast = names(state.snapshot.rows);
    for (const auto* player :
         {"Google Chrome", "Google Chrome Helper", "Slack", "Slack Helper (GPU)", "Microsoft Teams",
          "Microsoft Teams WebView Helper", "Xcode", "Spotify", "Spotify Helper (Renderer)", "Mail", "WindowServer",
          "postgres", "node", "esbuild", "ruby", "claude", "mcp-server-github"}) {
        EXPECT_THAT(cast, Contains(player));
    }
}

TEST_F(DemoTest, givesEachProcessAPidOfItsOwn) {
    std::set<Pid> pids;
    for (const auto& row : state.snapshot.rows) EXPECT_TRUE(pids.insert(row.id()).second) << row.id();
}

TEST_F(DemoTest, leavesAgentsAloneInProjects) {
    int leftAlone = 0;
    for (const auto& group : groups()) {
        leftAlone += group.leftAlone;
        EXPECT_THAT(names(group.rows), testing::Not(Contains("claude")));
    }
    EXPECT_EQ(leftAlone, 2);
}

TEST_F(DemoTest, countsTheBundlersHelperButDoesNotRememberIt) {
    const auto all = groups();
    const auto atlas = std::ranges::find(all, folders.atlas, &ProjectGroup::root);
    ASSERT_NE(atlas, all.end());
    EXPECT_THAT(names(atlas->rows), Contains("esbuild"));
    EXPECT_THAT(names(Projects::roots(atlas->rows)), testing::Not(Contains("esbuild")));
}

TEST_F(DemoTest, runsFourProjectsAndParksTwo) {
    std::vector<std::string> roots;
    for (const auto& group : groups()) roots.push_back(group.root);
    EXPECT_THAT(roots, UnorderedElementsAre(folders.atlas, folders.billing, folders.mobile, folders.docs));
    EXPECT_THAT(state.parked, SizeIs(2));
    EXPECT_THAT(Docker::containersIn(state.containers, folders.billing), SizeIs(2));
    EXPECT_EQ(state.containers.front().name, "billing-api-redis-1");
}

TEST_F(DemoTest, showsEachMarkOfABranch) {
    EXPECT_TRUE(state.branches.at(folders.atlas).remoteGone);
    EXPECT_TRUE(state.branches.at(folders.mobile).state.deleted);
    EXPECT_EQ(state.branches.at(folders.billing).state.branch, "main");
    EXPECT_FALSE(state.branches.at(folders.docs).state.branch.has_value());
}

TEST_F(DemoTest, remembersSixHoursOfEachProcessAndOneOfLoad) {
    for (const auto& row : state.snapshot.rows) EXPECT_THAT(state.history.points({row.id()}), SizeIs(360));
    ASSERT_THAT(state.loadHistory, SizeIs(60));
    EXPECT_EQ(state.loadHistory.back().date, now);
    for (const auto& point : state.loadHistory) EXPECT_GE(point.performance, 0.3);
}

TEST_F(DemoTest, givesAProcessNoMemoryBeforeItExisted) {
    const auto points = state.history.points({80502});
    EXPECT_EQ(points.at(360 - 24).footprint, 0U);
    EXPECT_GT(points.at(360 - 22).footprint, 0U);
}

TEST_F(DemoTest, hasADayOfMomentsWithAllLevelsOfPressure) {
    ASSERT_THAT(state.moments, SizeIs(1440));
    EXPECT_EQ(state.moments.back().date, now);
    for (const std::int64_t level : {1, 2, 4}) {
        EXPECT_THAT(state.moments, Contains(Field(&Moment::pressure, level)));
    }
    for (const auto& moment : state.moments) {
        EXPECT_LT(moment.used, moment.total);
        EXPECT_FALSE(moment.holders.empty());
    }
}

TEST_F(DemoTest, readsNothingBackwards) {
    for (std::size_t place = 1; place < state.moments.size(); ++place) {
        EXPECT_GE(*state.moments[place].swapIns, *state.moments[place - 1].swapIns);
    }
}

TEST_F(DemoTest, tellsTheSwapGrowthThatItsMomentsTell) {
    const auto growth =
        HistoryMath::swapGrowth(state.moments, static_cast<std::int64_t>(state.snapshot.memory.swapUsed), now);
    ASSERT_TRUE(growth.has_value());
    EXPECT_NEAR(static_cast<double>(growth->amount), static_cast<double>(state.swapGrowth), 2e6);
}

TEST_F(DemoTest, namesTheHoldersOfMomentsAsTheTableDoes) {
    EXPECT_THAT(state.moments.back().holders, Contains(Field(&Holder::title, Text("Google Chrome"))));
    EXPECT_THAT(state.moments.back().holders, Contains(Field(&Holder::key, Text("cmd:node"))));
}

TEST_F(DemoTest, sharesTheTextsOfItsMoments) {
    EXPECT_EQ(state.moments.front().holders.front().title.view().data(),
              state.moments.back().holders.front().title.view().data());
}

TEST_F(DemoTest, somethingGrewWhileMemoryWasTight) {
    const auto& then = state.moments.at(1440 - 200);
    const auto& before = state.moments.at(1440 - 215);
    EXPECT_FALSE(HistoryMath::grewMost(before, then, &Holder::memory, 5).empty());
}

TEST_F(DemoTest, showsEachModeOfARule) {
    for (const auto mode : {RuleMode::off, RuleMode::logOnly, RuleMode::on}) {
        EXPECT_TRUE(std::ranges::any_of(state.rules, [mode](const Rule& rule) { return rule.mode() == mode; }));
    }
}

TEST_F(DemoTest, listsItsActsNewestFirst) {
    ASSERT_GE(state.activity.size(), 5U);
    std::vector<std::string> told;
    for (std::size_t place = 0; place < 5; ++place) {
        told.push_back(std::string(state.activity[place].outcome.view()) + " " +
                       std::string(state.activity[place].subject.view()));
    }
    EXPECT_THAT(told, ElementsAre("Terminated node", "Would terminate ruby", "Terminated claude", "Relaunched Slack",
                                  "Terminated node"));
    EXPECT_TRUE(std::ranges::is_sorted(state.activity, std::greater{}, &ActivityEntry::date));
    EXPECT_GT(ActivityStats::freed(state.activity, distantPast).memory, 0U);
}

TEST_F(DemoTest, listensOnPortsOfProcessesThatExist) {
    for (const auto& [pid, ports] : state.ports) {
        EXPECT_TRUE(std::ranges::any_of(state.snapshot.rows, [pid](const ProcRow& row) { return row.id() == pid; }));
        EXPECT_FALSE(ports.empty());
    }
}

struct DemoModelTest : ModelTest {};

TEST_F(DemoModelTest, showsTheDemoAndNeverTicks) {
    startDemo();
    const auto state = Demo::state(clock.now(), {.home = world.home, .uid = 501});
    EXPECT_EQ(*model->snapshot, state.snapshot);
    EXPECT_EQ(*model->moments, state.moments);
    EXPECT_EQ(*model->activity, state.activity);
    EXPECT_EQ(*model->selectedRows, state.selectedRows);
    EXPECT_TRUE(*model->memoryTight);
    world.showWindow(true);
    world.press();
    clock.advance(Seconds{600});
    EXPECT_EQ(ticks(), 0U);
    EXPECT_EQ(*model->snapshot, state.snapshot);
}

TEST_F(DemoModelTest, hasSomethingFromEachDetector) {
    startDemo();
    std::set<Suggestion::Kind> kinds;
    for (const auto& each : *model->suggestions) kinds.insert(each.kind);
    using enum Suggestion::Kind;
    EXPECT_THAT(kinds, UnorderedElementsAre(simulator, leftRunning, growing, duplicate, busy, idle));
    EXPECT_EQ(model->suggestions->front().title, "iPhone 17 Pro");
}

TEST_F(DemoModelTest, storesItsRulesAndParkedProjectsLikeAnyOther) {
    startDemo();
    EXPECT_EQ(model->store().loadRules(), *model->rules);
    EXPECT_EQ(model->store().loadParked(), *model->parked);
}

}  // namespace tolvane
