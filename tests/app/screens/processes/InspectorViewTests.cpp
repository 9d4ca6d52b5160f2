#include "app/screens/processes/InspectorView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>

#include "tests/app/ModelTest.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct InspectorViewTest : ModelTest {
    InspectorViewTest() {
        world.add(7, "node").ports = {8080, 3000};
        world.add(8, "puma").ports = {9292};
        make(true, jobs.factory());
        modelState->snapshot.set(
            {.date = Date{Seconds{800'000'000}}, .rows = {fakes::row(7, "node"), fakes::row(8, "puma")}});
        view.emplace(*model, "en_US", [this] { ++changes; });
    }

    TableRow tableRow(std::size_t index) const {
        return TableRow::build(model->snapshot->rows, Grouping::all, 1, model->rowNames())[index];
    }
    void settle() { jobs.runAll(); }

    fakes::HeldJobs jobs;
    std::optional<InspectorView> view;
    int changes = 0;
};

TEST_F(InspectorViewTest, readsThePortsOfTheRowItShows) {
    view->show(tableRow(0));
    EXPECT_THAT(view->ports(), IsEmpty());
    settle();
    EXPECT_THAT(view->ports(), ElementsAre(3000, 8080));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(view->content().process[2].value, "3000, 8080");
}

TEST_F(InspectorViewTest, readsThePortsOfARowOnce) {
    view->show(tableRow(0));
    settle();
    auto later = tableRow(0);
    later.memory += MiB;
    view->show(later);
    settle();
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(view->ports(), ElementsAre(3000, 8080));
    EXPECT_EQ(view->content().figures[0].value, "2 MB");
}

TEST_F(InspectorViewTest, forgetsThePortsOfTheRowBefore) {
    view->show(tableRow(0));
    settle();
    view->show(tableRow(1));
    EXPECT_THAT(view->ports(), IsEmpty());
    settle();
    EXPECT_THAT(view->ports(), ElementsAre(9292));
}

TEST_F(InspectorViewTest, aReusedPidIsAnotherProcess) {
    view->show(tableRow(0));
    settle();
    world.find(7)->ports = {5000};
    auto reborn = tableRow(0);
    reborn.started = *reborn.started + Seconds{60};
    view->show(reborn);
    settle();
    EXPECT_THAT(view->ports(), ElementsAre(5000));
}

TEST_F(InspectorViewTest, readsNoPortsOfAGroup) {
    view->show(tableRow(0));
    view->show(TableRow::group("g", "group", {}, {}, {tableRow(0), tableRow(1)}));
    settle();
    EXPECT_THAT(view->ports(), IsEmpty());
    EXPECT_EQ(changes, 0);
}

TEST_F(InspectorViewTest, asksBeforeItForceQuits) {
    view->show(tableRow(0));
    EXPECT_FALSE(view->confirmForceQuit);
    EXPECT_EQ(view->forceQuitQuestion().title, "Force quit node?");
    EXPECT_EQ(view->forceQuitQuestion().message, "Unsaved work in node will be lost.");
}

TEST_F(InspectorViewTest, aQuestionAboutAnotherRowIsOver) {
    view->show(tableRow(0));
    view->confirmForceQuit = true;
    view->show(tableRow(0));
    EXPECT_TRUE(view->confirmForceQuit);
    view->show(tableRow(1));
    EXPECT_FALSE(view->confirmForceQuit);
}

TEST_F(InspectorViewTest, saysNothingOfNothing) {
    EXPECT_EQ(view->row(), std::nullopt);
    EXPECT_EQ(view->content().title, "");
}

TEST_F(InspectorViewTest, drawsWhatTheModelRemembers) {
    view->show(tableRow(0));
    EXPECT_EQ(view->content().memoryChart, std::nullopt);
    modelState->history.update([&](ProcessHistory& history) {
        const ProcessHistory::Reading reading{.pid = 7, .footprint = 3 * MiB};
        history.record(std::span(&reading, 1), Date{Seconds{800'000'000 - 600}});
        history.record(std::span(&reading, 1), Date{Seconds{800'000'000}});
    });
    const auto chart = view->content().memoryChart;
    ASSERT_TRUE(chart);
    EXPECT_THAT(chart->series[0].values, ElementsAre(3, 3));
    EXPECT_EQ(chart->accessibleText, "Memory of node over the last 10 min");
}

TEST_F(InspectorViewTest, drawsWhatCameSinceTheClockWasSetBack) {
    view->show(tableRow(0));
    modelState->history.update([&](ProcessHistory& history) {
        for (const double at : {7200.0, 7260.0, 0.0, 60.0, 120.0}) {
            const ProcessHistory::Reading reading{.pid = 7, .footprint = (at > 3600 ? 9 : 3) * MiB};
            history.record(std::span(&reading, 1), Date{Seconds{800'000'000 + at}});
        }
    });
    const auto content = view->content();
    EXPECT_THAT(content.memoryChart.value().series[0].values, ElementsAre(3, 3, 3));
    EXPECT_EQ(content.memoryChart.value().accessibleText, "Memory of node over the last 2 min");
    EXPECT_THAT(content.cpuChart.value().dates, SizeIs(3));
}

}  // namespace
}  // namespace tolvane
