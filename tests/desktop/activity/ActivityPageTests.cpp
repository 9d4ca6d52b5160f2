#include "desktop/activity/ActivityPage.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QPushButton>
#include <QScrollBar>

#include "desktop/parts/EmptyState.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/parts/SegmentedPicker.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/ProcessorTime.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleLog.h"

namespace tolvane::desktop {
namespace {

class ActivityPageTest : public ::testing::Test {
protected:
    ActivityPageTest() : log(fakes::SampleLog::at(scene.model.now())) {}

    ActivityPage& page() {
        if (!page_) {
            page_ = std::make_unique<ActivityPage>(scene.model, scene.look, scene.state, "en_GB", "UTC");
            page_->resize(860, 500);
            page_->show();
            turnLoop();
        }
        return *page_;
    }
    QString cell(int row, int column) { return page().table().activityModel().index(row, column).data().toString(); }
    std::string emptyTitle() {
        for (const auto* each : page().findChildren<EmptyState*>()) {
            if (each->isVisible()) return each->accessibleName().toStdString();
        }
        return {};
    }
    void prepend(ActivityEntry entry) {
        auto entries = *scene.model.activity;
        entries.insert(entries.begin(), std::move(entry));
        scene.modelState->activity.set(std::move(entries));
    }

    SampleScene scene;
    fakes::SampleLog log;
    std::unique_ptr<ActivityPage> page_;
};

TEST_F(ActivityPageTest, listsTheLog) {
    scene.modelState->activity.set(log.activity);
    const auto& model = page().table().activityModel();
    EXPECT_EQ(model.rowCount(), 16);
    EXPECT_EQ(cell(0, 1), "Terminated");
    EXPECT_EQ(cell(0, 2), "node");
    EXPECT_EQ(cell(0, 3), "612.4 MB");
    EXPECT_EQ(model.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), "Memory");
    EXPECT_FALSE(model.index(0, 0).data(ActivityModel::dryRunRole).toBool());
    EXPECT_TRUE(model.index(1, 0).data(ActivityModel::dryRunRole).toBool());
    EXPECT_EQ(emptyTitle(), "");
}

TEST_F(ActivityPageTest, saysWhyTheListIsEmpty) {
    EXPECT_EQ(emptyTitle(), "No Activity");
    EXPECT_FALSE(widgetNamed<QPushButton>(page(), "clear").isEnabled());
    std::erase_if(log.activity, [](const auto& each) { return !each.dryRun; });
    scene.modelState->activity.set(log.activity);
    EXPECT_EQ(emptyTitle(), "");
    emit widgetNamed<SegmentedPicker>(page(), "filter").chosen(1);
    EXPECT_EQ(emptyTitle(), "No Actions");
    EXPECT_TRUE(widgetNamed<QPushButton>(page(), "clear").isEnabled());
    scene.modelState->activity.set({});
    emit widgetNamed<SegmentedPicker>(page(), "filter").chosen(2);
    EXPECT_EQ(emptyTitle(), "Nothing Logged");
}

TEST_F(ActivityPageTest, newEntriesKeepSelectionAndPlace) {
    scene.modelState->activity.set(fakes::SampleLog::longLog(500, scene.model.now()));
    auto& table = page().table();
    const QAbstractItemModelTester tester(&table.activityModel(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    table.setCurrentIndex(table.activityModel().index(40, 0));
    turnLoop();
    const auto subject = cell(40, 0);
    prepend(log.activity.front());
    EXPECT_EQ(table.currentIndex().row(), 41);
    EXPECT_EQ(cell(41, 0), subject);
    EXPECT_EQ(table.selectionModel()->selectedRows().size(), 1);
}

TEST_F(ActivityPageTest, clearingAsksFirst) {
    scene.modelState->activity.set(log.activity);
    widgetNamed<QPushButton>(page(), "clear").click();
    auto* dialog = page().findChild<QuestionDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->accessibleName(), "Clear the activity log?");
    EXPECT_TRUE(dialog->cancel().isDefault());
    type(*dialog, Qt::Key_Escape);
    EXPECT_EQ(scene.model.activity->size(), 16U);
    turnLoop();
    widgetNamed<QPushButton>(page(), "clear").click();
    page().findChild<QuestionDialog*>()->action().click();
    EXPECT_TRUE(scene.model.activity->empty());
    EXPECT_EQ(emptyTitle(), "No Activity");
}

TEST_F(ActivityPageTest, returnAnswersAQuestionWithCancel) {
    scene.modelState->activity.set(log.activity);
    widgetNamed<QPushButton>(page(), "clear").click();
    type(*page().findChild<QuestionDialog*>(), Qt::Key_Return);
    EXPECT_EQ(scene.model.activity->size(), 16U);
}

TEST_F(ActivityPageTest, aLogOfAHundredThousandStaysQuick) {
    scene.modelState->activity.set(fakes::SampleLog::longLog(100'000, scene.model.now()));
    ProcessorTime time;
    page();
    EXPECT_LT(time.taken(), 1000) << "opening, all of the window's own cost included";
    page().table().verticalScrollBar()->setValue(page().table().verticalScrollBar()->maximum() / 2);
    page().grab();
    EXPECT_LT(time.taken(), 200) << "scrolling";
    emit widgetNamed<SegmentedPicker>(page(), "filter").chosen(2);
    page().grab();
    EXPECT_LT(time.taken(), 300) << "filtering";
    prepend(log.activity.front());
    turnLoop();
    EXPECT_LT(time.taken(), 500) << "one more entry";
}

TEST_F(ActivityPageTest, columnsKeepTheWidthsThatTheyWereGiven) {
    scene.modelState->activity.set(log.activity);
    page().table().setColumnWidths("2=250;9=1;x=y;1=-4");
    EXPECT_EQ(page().table().columnWidths(), "2=250");
    EXPECT_EQ(page().table().columnWidth(2), 250);
}

TEST_F(ActivityPageTest, entriesAreCopiedAsLinesOfCells) {
    scene.modelState->activity.set(log.activity);
    auto& table = page().table();
    table.setCurrentIndex(table.activityModel().index(0, 0));
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(&table, &copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              cell(0, 0) + "\tTerminated\tnode\t612.4 MB\tForgotten Vite and Next dev servers");
}

}  // namespace
}  // namespace tolvane::desktop
