#include "desktop/history/HistoryPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>

#include "desktop/charts/MomentChart.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/SegmentedPicker.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class HistoryPageTest : public ::testing::Test {
protected:
    HistoryPageTest() {
        std::vector<Moment> moments;
        for (int minute = 300; minute >= 0; --minute) moments.push_back(moment(minute));
        scene.modelState->moments.set(std::move(moments));
        page = std::make_unique<HistoryPage>(scene.model, scene.look, "en_GB", "UTC");
        page->resize(860, 588);
        page->show();
        turnLoop();
    }

    Date now() const { return scene.fake.clock->now(); }
    Moment moment(int minutesAgo) const {
        Moment made{.date = now() - Seconds{60.0 * minutesAgo},
                    .total = 32ULL << 30U,
                    .used = 16ULL << 30U,
                    .compressed = 2ULL << 30U,
                    .swapUsed = 1ULL << 30U,
                    .pressure = minutesAgo > 100 && minutesAgo < 150 ? 2 : 1,
                    .cpu = 0.3,
                    .cores = 12,
                    .performance = 2,
                    .efficiency = 1};
        made.holders.push_back({.key = "a", .title = "Notes", .memory = 1ULL << 30U});
        return made;
    }
    MomentChart& memory() { return widgetNamed<MomentChart>(*page, "memory"); }
    Date focus() { return memory().shown().focus; }
    QPoint at(const MomentChart& chart, Date date) {
        return {static_cast<int>(chart.xAt(date)), chart.plotRect().center().y()};
    }

    SampleScene scene;
    std::unique_ptr<HistoryPage> page;
};

TEST_F(HistoryPageTest, looksAtTheLatestMoment) {
    EXPECT_FALSE(isChosen(*page, "empty"));
    EXPECT_EQ(focus(), now());
    EXPECT_EQ(widgetNamed<MomentChart>(*page, "cpu").shown().focus, now());
}

TEST_F(HistoryPageTest, aClickOnAChartChoosesTheMomentThere) {
    const Date wanted = now() - Seconds{7200};
    click(memory(), at(memory(), wanted));
    EXPECT_NEAR((focus() - wanted).count(), 0, 60);
    EXPECT_EQ(widgetNamed<MomentChart>(*page, "cpu").shown().focus, focus());
    EXPECT_TRUE(memory().accessibleDescription().contains(QStringLiteral("16 GB of 32 GB used")));
}

TEST_F(HistoryPageTest, chartsTellTheirAxes) {
    EXPECT_TRUE(memory().accessibleDescription().startsWith("Time, GB, Kind: Used, Compressed, Swap; Latest, "));
    EXPECT_TRUE(widgetNamed<MomentChart>(*page, "cpu")
                    .accessibleDescription()
                    .startsWith("Time, Cores, Efficiency, Performance; Latest, "));
}

TEST_F(HistoryPageTest, aBandOfTimesThatHaveNotComeStaysInThePlot) {
    auto moments = *scene.model.moments;
    for (const double minutes : {1.0, 600.0}) {
        auto ahead = moment(0);
        ahead.date = now() + Seconds{60 * minutes};
        moments.back().pressure = 4;
        moments.push_back(std::move(ahead));
    }
    moments.back().pressure = 4;
    scene.modelState->moments.set(std::move(moments));
    turnLoop();
    const auto picture = memory().grab().toImage();
    const auto plot = memory().plotRect();
    const auto ground = picture.pixelColor(picture.width() - 1, 1);
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, plot.center().y()), ground);
    EXPECT_FALSE(memory().shown().bands.empty());
}

TEST_F(HistoryPageTest, aDragFollowsThePointer) {
    auto& cpu = widgetNamed<MomentChart>(*page, "cpu");
    drag(cpu, at(cpu, now() - Seconds{7200}), at(cpu, now() - Seconds{3600}));
    EXPECT_NEAR((focus() - (now() - Seconds{3600})).count(), 0, 60);
}

TEST_F(HistoryPageTest, aDragBeyondTheChartStaysAtItsEnd) {
    drag(memory(), at(memory(), now() - Seconds{7200}), QPoint(-500, 100));
    EXPECT_EQ(focus(), now() - Seconds{300 * 60.0});
}

TEST_F(HistoryPageTest, keysStepAndEscapeGoesBack) {
    type(memory(), Qt::Key_Left);
    EXPECT_EQ(focus(), now() - Seconds{60});
    type(memory(), Qt::Key_Left);
    type(memory(), Qt::Key_Right);
    EXPECT_EQ(focus(), now() - Seconds{60});
    type(memory(), Qt::Key_Home);
    EXPECT_EQ(focus(), now() - Seconds{300 * 60.0});
    type(memory(), Qt::Key_End);
    EXPECT_EQ(focus(), now());
    type(memory(), Qt::Key_Home);
    type(memory(), Qt::Key_Escape);
    EXPECT_EQ(focus(), now());
    EXPECT_EQ(page->view().selected(), std::nullopt);
}

TEST_F(HistoryPageTest, anotherRangeShowsAnotherSpan) {
    type(memory(), Qt::Key_Home);
    auto* hour = widgetNamed<SegmentedPicker>(*page, "range").findChildren<QAbstractButton*>().front();
    hour->click();
    EXPECT_EQ(memory().shown().from, now() - Seconds{3600});
    EXPECT_EQ(focus(), now());
}

TEST_F(HistoryPageTest, withoutMomentsItSaysSo) {
    scene.modelState->moments.set({});
    turnLoop();
    EXPECT_TRUE(isChosen(*page, "empty"));
    scene.modelState->moments.set({moment(1)});
    turnLoop();
    EXPECT_FALSE(isChosen(*page, "empty"));
}

TEST_F(HistoryPageTest, aNewMomentIsShownWhileTheScreenCanBeSeen) {
    scene.fake.clock->jumpTo(now() + Seconds{60});
    scene.modelState->moments.update([&](auto& moments) { moments.push_back(moment(0)); });
    turnLoop();
    EXPECT_EQ(focus(), now());
    page->hide();
    scene.fake.clock->jumpTo(now() + Seconds{60});
    scene.modelState->moments.update([&](auto& moments) { moments.push_back(moment(0)); });
    turnLoop();
    EXPECT_EQ(focus(), now() - Seconds{60});
    page->show();
    turnLoop();
    EXPECT_EQ(focus(), now());
}

TEST_F(HistoryPageTest, chartsSayWhatTheyShow) {
    EXPECT_EQ(memory().accessibleName(), QStringLiteral("Memory used, compressed and swap over time"));
    EXPECT_EQ(widgetNamed<MomentChart>(*page, "cpu").accessibleName(),
              QStringLiteral("CPU load in cores over time, performance cores stacked on efficiency cores"));
    EXPECT_NE(memory().focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(page->firstFocus(), &memory());
}

TEST_F(HistoryPageTest, narrowAndLargeItStillHasRoomForItsCharts) {
    page->resize(400, 300);
    turnLoop();
    EXPECT_GT(memory().plotRect().width(), 200);
    EXPECT_LE(memory().plotRect().bottom(), memory().height());
}

}  // namespace
}  // namespace tolvane::desktop
