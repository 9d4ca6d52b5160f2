#include "app/screens/processes/RowActs.h"

#include <gmock/gmock.h>

#include "app/screens/processes/RowProcesses.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string mail = "/Applications/Mail.app";

struct RowActsTest : ModelTest {
    std::vector<std::string> told;
    std::unique_ptr<RowActs> acts;

    void begin() {
        start();
        acts =
            std::make_unique<RowActs>(*model, [this](const Outcome& outcome) { told.push_back(outcome.sentence()); });
    }
    /// The table's top-level row that holds the process.
    tolvane::TableRow lineOf(Pid pid) const {
        for (auto& line : tolvane::TableRow::build(model->snapshot->rows, Grouping::apps, 1, model->rowNames())) {
            if (std::ranges::find(line.pids, pid) != line.pids.end()) return line;
        }
        return {};
    }
    std::size_t asked(Pid pid) const { return world.timesAsked("signal 15 " + std::to_string(pid)); }
    std::size_t killed(Pid pid) const { return world.timesAsked("signal 9 " + std::to_string(pid)); }
    /// Ends the process, gives its pid to another one and takes a sample.
    void replace(Pid pid) {
        world.end(pid);
        world.add(pid, "newcomer").bsd->startTime = clock.now();
        world.press();
    }
    fakes::FakeInstance& addMail(Pid pid) {
        world.appIDs[mail] = "com.example.mail";
        world.displayNames[mail] = "Mail.app";
        addApp(pid, mail);
        return world.instances.emplace_back(fakes::FakeInstance{.identifier = "com.example.mail", .appPath = mail});
    }
};

TEST_F(RowActsTest, terminateAsksTheProcessesAndSaysNothingWhenTheyEnd) {
    world.add(7, "node").endsAfter = 2s;
    begin();
    acts->perform(ProcessAction::terminate, lineOf(7));
    clock.advance(20s);
    EXPECT_EQ(asked(7), 1U);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(model->activity->empty());
}

TEST_F(RowActsTest, terminateSaysWhatWouldNotEnd) {
    world.add(7, "node");
    world.shielded = {7};
    begin();
    acts->perform(ProcessAction::terminate, lineOf(7));
    EXPECT_THAT(told, IsEmpty());
    clock.advance(11s);
    EXPECT_THAT(told, ElementsAre("Could not stop node. Still running."));
}

TEST_F(RowActsTest, whoTookOverANumberMeanwhileIsLeftAlone) {
    world.add(7, "node");
    world.add(8, "node").endsAfter = std::nullopt;
    begin();
    const auto line = lineOf(7);
    ASSERT_THAT(line.pids, testing::UnorderedElementsAre(7, 8));
    replace(7);
    acts->perform(ProcessAction::terminate, line);
    acts->forceQuit({line});
    acts->perform(ProcessAction::lowerPriority, line);
    EXPECT_EQ(asked(7) + killed(7) + world.timesAsked("lower 7"), 0U);
    EXPECT_EQ(asked(8), 1U);
    EXPECT_EQ(killed(8), 1U);
}

TEST_F(RowActsTest, quitAsksEveryInstance) {
    addMail(7);
    addMail(8);
    begin();
    acts->perform(ProcessAction::quit, lineOf(7));
    EXPECT_EQ(world.instances[0].asked, 1);
    EXPECT_EQ(world.instances[1].asked, 1);
    clock.advance(20s);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RowActsTest, quitSaysWhenTheApplicationStays) {
    addMail(7).quitsAfter = std::nullopt;
    begin();
    acts->perform(ProcessAction::quit, lineOf(7));
    clock.advance(9.5s);
    EXPECT_THAT(told, IsEmpty());
    clock.advance(1s);
    EXPECT_THAT(told, ElementsAre("Asked Mail to quit."));
    EXPECT_EQ(world.instances[0].forced, 0);
}

TEST_F(RowActsTest, quitSaysWhenNothingRuns) {
    addMail(7).terminated = true;
    begin();
    acts->perform(ProcessAction::quit, lineOf(7));
    EXPECT_THAT(told, ElementsAre("Mail was not running."));
}

TEST_F(RowActsTest, relaunchStartsTheApplicationAgain) {
    addMail(7).quitsAfter = 1s;
    begin();
    acts->perform(ProcessAction::relaunch, lineOf(7));
    clock.advance(1s);
    EXPECT_EQ(world.timesAsked("open " + mail), 1U);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RowActsTest, relaunchSaysWhatWentWrong) {
    addMail(7).quitsAfter = std::nullopt;
    begin();
    acts->perform(ProcessAction::relaunch, lineOf(7));
    clock.advance(31s);
    EXPECT_THAT(told, ElementsAre("Could not restart Mail. Did not quit, it may have unsaved changes."));
}

TEST_F(RowActsTest, prioritiesAreLentAndGivenBack) {
    world.add(7, "node");
    begin();
    acts->perform(ProcessAction::lowerPriority, lineOf(7));
    EXPECT_TRUE(model->lowered->contains(7));
    acts->perform(ProcessAction::restorePriority, lineOf(7));
    EXPECT_FALSE(model->lowered->contains(7));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RowActsTest, aPriorityThatTheHostKeepsIsTold) {
    world.add(7, "node");
    world.shielded = {7};
    begin();
    acts->perform(ProcessAction::lowerPriority, lineOf(7));
    EXPECT_THAT(told, ElementsAre("Could not lower the priority of node. Priority unchanged."));
}

TEST_F(RowActsTest, forceQuitKillsAndLooksAfterwards) {
    world.add(7, "node").endsAfter = std::nullopt;
    world.add(8, "vite");
    world.shielded = {8};
    begin();
    acts->forceQuit({lineOf(7), lineOf(8)});
    EXPECT_EQ(killed(7), 1U);
    EXPECT_THAT(told, IsEmpty());
    clock.advance(1s);
    EXPECT_THAT(told, ElementsAre("Could not stop vite. Still running."));
}

TEST_F(RowActsTest, nobodyIsToldAfterTheScreenIsGone) {
    world.add(7, "node");
    addMail(8).quitsAfter = std::nullopt;
    world.shielded = {7};
    begin();
    acts->perform(ProcessAction::terminate, lineOf(7));
    acts->forceQuit({lineOf(7)});
    acts->perform(ProcessAction::relaunch, lineOf(8));
    acts->perform(ProcessAction::quit, lineOf(8));
    acts.reset();
    clock.advance(60s);
    EXPECT_THAT(told, IsEmpty());
}

TEST(RowPresence, aLineKeepsTheProcessesThatLiveOn) {
    auto rows = std::vector{fakes::row(7, "node"), fakes::row(8, "node"), fakes::row(9, "node")};
    const auto lines = TableRow::build(rows, Grouping::apps, 1, {});
    ASSERT_EQ(lines.size(), 1U);
    rows.erase(rows.begin());
    rows[0].sample.startTime += 1s;
    EXPECT_THAT(RowProcesses::present(lines[0], rows).pids, ElementsAre(9));
    EXPECT_THAT(RowProcesses::lives(lines[0]), testing::SizeIs(3));
}

TEST(RowPresence, aSingleProcessStaysOrGoes) {
    auto rows = std::vector{fakes::row(7, "node")};
    const auto lines = TableRow::build(rows, Grouping::all, 1, {});
    EXPECT_THAT(RowProcesses::present(lines.at(0), rows).pids, ElementsAre(7));
    rows[0].sample.startTime += 1s;
    EXPECT_THAT(RowProcesses::present(lines.at(0), rows).pids, IsEmpty());
}

}  // namespace
}  // namespace tolvane
