#include "desktop/stats/StatsPage.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include "desktop/charts/DayChart.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/SegmentedPicker.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/ProcessorTime.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleLog.h"

namespace tolvane::desktop {
namespace {

class StatsPageTest : public ::testing::Test {
protected:
    StatsPageTest() : log(fakes::SampleLog::at(scene.model.now())) {
        scene.modelState->rules.set(log.rules);
        scene.modelState->activity.set(log.activity);
    }

    StatsPage& page() {
        if (!page_) {
            page_ = std::make_unique<StatsPage>(scene.model, scene.look, "en_GB", "UTC");
            page_->resize(860, 800);
            page_->show();
            turnLoop();
        }
        return *page_;
    }
    bool says(const QString& text) {
        for (const auto* each : page().findChildren<QWidget*>()) {
            if (each->isVisible() && each->accessibleName() == text) return true;
        }
        return false;
    }

    SampleScene scene;
    fakes::SampleLog log;
    std::unique_ptr<StatsPage> page_;
};

TEST_F(StatsPageTest, showsTheSums) {
    EXPECT_TRUE(says("Freed by rules, last 7 days"));
    EXPECT_TRUE(says("7.74 GB"));
    EXPECT_TRUE(says("From 9 actions. 2.58 GB of it was compressed or in swap."));
    EXPECT_TRUE(says("Each rule"));
    EXPECT_TRUE(says("Memory freed each day"));
    EXPECT_TRUE(says("Log Only rules would have freed"));
    EXPECT_FALSE(isChosen(page(), "empty"));
}

TEST_F(StatsPageTest, aTitleWithoutRoomIsTheShortOne) {
    page().resize(170, 800);
    turnLoop();
    EXPECT_TRUE(says("Each day"));
    EXPECT_EQ(widgetNamed<DayChart>(page(), "days").accessibleName(), "Memory freed each day");
    page().resize(860, 800);
    turnLoop();
    EXPECT_FALSE(says("Each day"));
}

TEST_F(StatsPageTest, anotherPeriodIsCountedAnew) {
    page();
    emit widgetNamed<SegmentedPicker>(page(), "period").chosen(1);
    EXPECT_TRUE(says("Freed by rules, last 30 days"));
    EXPECT_FALSE(says("Freed by rules, last 7 days"));
}

TEST_F(StatsPageTest, aClickSelectsADay) {
    const auto& chart = widgetNamed<DayChart>(page(), "days");
    click(widgetNamed<DayChart>(page(), "days"), chart.slot(6).center());
    EXPECT_TRUE(chart.accessibleName().startsWith("Memory freed each day, ")) << qPrintable(chart.accessibleName());
    const auto name = chart.accessibleName();
    click(widgetNamed<DayChart>(page(), "days"), chart.slot(4).center());
    EXPECT_NE(chart.accessibleName(), name);
}

TEST_F(StatsPageTest, arrowKeysMoveTheSelectedDayAndEscapeGivesItUp) {
    auto& chart = widgetNamed<DayChart>(page(), "days");
    type(chart, Qt::Key_Left);
    const auto today = chart.accessibleName();
    type(chart, Qt::Key_Right);
    EXPECT_EQ(chart.accessibleName(), today) << "there is nothing after today";
    type(chart, Qt::Key_Left);
    const auto yesterday = chart.accessibleName();
    EXPECT_NE(yesterday, today);
    type(chart, Qt::Key_Home);
    EXPECT_NE(chart.accessibleName(), yesterday);
    type(chart, Qt::Key_Left);
    type(chart, Qt::Key_End);
    EXPECT_EQ(chart.accessibleName(), today);
    type(chart, Qt::Key_Escape);
    EXPECT_EQ(chart.accessibleName(), "Memory freed each day");
}

TEST_F(StatsPageTest, aSelectedDayOutsideThePeriodIsNotMarked) {
    emit widgetNamed<SegmentedPicker>(page(), "period").chosen(1);
    type(widgetNamed<DayChart>(page(), "days"), Qt::Key_Home);
    EXPECT_NE(widgetNamed<DayChart>(page(), "days").accessibleName(), "Memory freed each day");
    emit widgetNamed<SegmentedPicker>(page(), "period").chosen(0);
    EXPECT_EQ(widgetNamed<DayChart>(page(), "days").accessibleName(), "Memory freed each day");
}

TEST_F(StatsPageTest, theButtonShowsTheRule) {
    EXPECT_EQ(widgetNamed<QPushButton>(page(), "showRule").accessibleName(),
              "Show Restart Microsoft Teams when it grows");
    widgetNamed<QPushButton>(page(), "showRule").click();
    EXPECT_EQ(*scene.model.section, AppSection::rules);
    EXPECT_EQ(*scene.model.selectedRule, log.rules[3].id);
    scene.modelState->rules.set({});
    turnLoop();
    EXPECT_FALSE(widgetNamed<QPushButton>(page(), "showRule").isVisible());
}

TEST_F(StatsPageTest, withoutALogThereIsAnEmptyState) {
    page();
    scene.modelState->activity.set({});
    turnLoop();
    EXPECT_TRUE(isChosen(page(), "empty"));
    scene.modelState->activity.set(log.activity);
    turnLoop();
    EXPECT_FALSE(isChosen(page(), "empty"));
}

TEST_F(StatsPageTest, whatHappenedMeanwhileIsCountedWhenItComesBack) {
    page().hide();
    scene.modelState->activity.set({log.activity.front()});
    turnLoop();
    EXPECT_TRUE(widgetNamed<DayChart>(page(), "days").isHidden() || !page().isVisible());
    page().show();
    EXPECT_TRUE(says("612.4 MB"));
}

TEST_F(StatsPageTest, scrollsOnlyWhereThereIsTooLittleHeight) {
    page().resize(860, 800);
    turnLoop();
    auto* bar = page().findChild<QScrollArea*>()->verticalScrollBar();
    EXPECT_EQ(bar->maximum(), 0);
    page().resize(860, 300);
    turnLoop();
    EXPECT_GT(bar->maximum(), 0);
    for (const auto* words : page().findChildren<ParagraphLabel*>()) {
        EXPECT_GE(words->height(), words->heightForWidth(words->width())) << qPrintable(words->accessibleName());
    }
}

TEST_F(StatsPageTest, aLogOfAHundredThousandIsCountedQuickly) {
    scene.modelState->activity.set(fakes::SampleLog::longLog(100'000, scene.model.now()));
    page();
    ProcessorTime time;
    emit widgetNamed<SegmentedPicker>(page(), "period").chosen(2);
    page().grab();
    EXPECT_LT(time.taken(), 500);
}

}  // namespace
}  // namespace tolvane::desktop
