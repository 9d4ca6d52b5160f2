#include "desktop/processes/InspectorPane.h"

#include <gtest/gtest.h>

#include <QPushButton>

#include "desktop/charts/RoundTicks.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class InspectorPaneTest : public ::testing::Test {
protected:
    InspectorPaneTest() {
        scene.look.install();
        pane.resize(240, 588);
        pane.QWidget::show();
    }
    std::vector<QPushButton*> buttons() const {
        turnLoop();
        std::vector<QPushButton*> visible;
        for (auto* each : pane.findChildren<QPushButton*>()) {
            if (each->isVisible()) visible.push_back(each);
        }
        return visible;
    }

    SampleScene scene;
    InspectorPane pane{scene.look, "en_US"};
    InspectorContent content{.title = "node",
                             .figures = {{.label = "Memory", .value = "1 GB"}},
                             .processHeading = "Process",
                             .process = {{.label = "PID", .value = "12"}, {.label = "Command", .value = "node -e 1"}},
                             .buttons = {{.title = "Lower Priority", .action = ProcessAction::lowerPriority},
                                         {.title = "Terminate", .action = ProcessAction::terminate},
                                         {.title = "Force Quit", .action = ProcessAction::forceQuit, .shortcut = 'f'}}};
};

TEST_F(InspectorPaneTest, saysWhenNothingIsSelected) {
    EXPECT_TRUE(pane.findChild<EmptyState*>()->isVisible());
    EXPECT_EQ(pane.findChild<EmptyState*>()->accessibleName(), "No Selection");
    pane.show(content);
    EXPECT_FALSE(pane.findChild<EmptyState*>()->isVisible());
    pane.showNothing();
    EXPECT_TRUE(buttons().empty());
}

TEST_F(InspectorPaneTest, offersWhatCanBeDone) {
    pane.show(content);
    ASSERT_EQ(buttons().size(), 3U);
    EXPECT_EQ(buttons()[0]->text(), "Lower Priority");
    EXPECT_EQ(buttons()[1]->text(), "Terminate");
    EXPECT_EQ(buttons()[2]->text(), "Force Quit");
    EXPECT_FALSE(buttons()[0]->property("destructive").toBool());
    EXPECT_TRUE(buttons()[2]->property("destructive").toBool());
    EXPECT_FALSE(buttons()[2]->shortcut().isEmpty());
}

TEST_F(InspectorPaneTest, aButtonWantsItsAction) {
    std::optional<ProcessAction> wanted;
    QObject::connect(&pane, &InspectorPane::actionWanted, &pane, [&](ProcessAction action) { wanted = action; });
    pane.show(content);
    buttons()[0]->click();
    EXPECT_EQ(wanted, ProcessAction::lowerPriority);
}

TEST_F(InspectorPaneTest, buttonsThatCannotActAreGrey) {
    content.buttons[0].enabled = false;
    pane.show(content);
    EXPECT_FALSE(buttons()[0]->isEnabled());
    EXPECT_TRUE(buttons()[1]->isEnabled());
}

TEST_F(InspectorPaneTest, theCommandCanBeSelectedAndKeepsItsSelection) {
    pane.show(content);
    auto* command = pane.findChild<CopyableText*>();
    EXPECT_EQ(command->toPlainText(), "node -e 1");
    command->selectAll();
    content.figures[0].value = "2 GB";
    pane.show(content);
    EXPECT_EQ(command->textCursor().selectedText(), "node -e 1");
}

TEST_F(InspectorPaneTest, aGroupHasNoProcessPart) {
    content.process.clear();
    pane.show(content);
    EXPECT_FALSE(pane.findChild<CopyableText*>()->isVisible());
}

TEST_F(InspectorPaneTest, endlessCommandsStayManageable) {
    content.process.back().value = std::string(3'000'000, 'x');
    pane.show(content);
    EXPECT_LT(pane.findChild<CopyableText*>()->toPlainText().size(), 30'000);
    EXPECT_LT(pane.findChild<CopyableText*>()->height(), 300);
}

TEST_F(InspectorPaneTest, longFiguresGoBelowTheirNames) {
    ValueRows rows(scene.look, Sizes::wideRowSpacing);
    rows.show({{.label = "Working folder", .value = "/home"}});
    const int one = rows.heightForWidth(208);
    rows.show({{.label = "Working folder", .value = "/home/ada/Developer/a-long-name"}});
    EXPECT_EQ(rows.heightForWidth(208), 2 * one);
    EXPECT_EQ(rows.heightForWidth(500), one);
}

TEST(RoundTicks, endAxesWithRoundFigures) {
    EXPECT_DOUBLE_EQ(roundTop(1884), 2000);
    EXPECT_DOUBLE_EQ(roundTop(2000), 2000);
    EXPECT_DOUBLE_EQ(roundTop(2001), 5000);
    EXPECT_DOUBLE_EQ(roundTop(7), 10);
    EXPECT_DOUBLE_EQ(roundTop(0.3), 0.5);
    EXPECT_DOUBLE_EQ(roundTop(0), 1);
    EXPECT_DOUBLE_EQ(roundTop(-4), 1);
    EXPECT_DOUBLE_EQ(roundTop(std::numeric_limits<double>::quiet_NaN()), 1);
    EXPECT_DOUBLE_EQ(roundTop(std::numeric_limits<double>::infinity()), 1);
}

}  // namespace
}  // namespace tolvane::desktop
