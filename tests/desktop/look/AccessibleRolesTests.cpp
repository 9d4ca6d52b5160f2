#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QSplitter>
#include <QSplitterHandle>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "desktop/charts/DayChart.h"
#include "desktop/charts/LineChart.h"
#include "desktop/charts/LoadChart.h"
#include "desktop/charts/MomentChart.h"
#include "desktop/machine/Headline.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/PopupPicker.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/processes/ProcessTable.h"
#include "desktop/window/Sidebar.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class SpokenRolesTest : public ::testing::Test {
protected:
    /// Creates a widget in a window, where all widgets of the program are.
    template <typename Part, typename... Arguments>
    Part& put(Arguments&&... arguments) {
        return *new Part(std::forward<Arguments>(arguments)..., &window);
    }
    static const QAccessibleInterface& spoken(QWidget& widget) {
        return *QAccessible::queryAccessibleInterface(&widget);
    }

    SampleScene scene;
    QWidget window;
};

TEST_F(SpokenRolesTest, aDrawnTextIsTextWithItsWords) {
    auto& line = put<ElidedLabel>(scene.look, TextRole::body, &Tokens::text);
    auto& paragraph = put<ParagraphLabel>(scene.look, TextRole::body, &Tokens::text);
    line.setText("One line");
    paragraph.setText("Several lines");
    EXPECT_EQ(spoken(line).role(), QAccessible::StaticText);
    EXPECT_EQ(spoken(line).text(QAccessible::Name), "One line");
    EXPECT_EQ(spoken(paragraph).role(), QAccessible::StaticText);
    EXPECT_EQ(spoken(paragraph).text(QAccessible::Name), "Several lines");
}

TEST_F(SpokenRolesTest, aPickerTellsWhatIsChosenAndWhatFor) {
    auto& picker = put<PopupPicker>(scene.look, "Unused for");
    picker.show({"15 minutes", "1 hour"}, 1);
    EXPECT_EQ(spoken(picker).role(), QAccessible::ComboBox);
    EXPECT_EQ(spoken(picker).text(QAccessible::Name), "Unused for: 1 hour");
    EXPECT_EQ(spoken(picker).text(QAccessible::Value), "1 hour");
}

TEST_F(SpokenRolesTest, whatPopsUpIsPartOfTheProgram) {
    auto* program = QAccessible::queryAccessibleInterface(qApp);
    QWidget popup(nullptr, Qt::Popup);
    popup.setAccessibleName("Tolvane");
    const int before = program->childCount();
    popup.show();
    ASSERT_EQ(program->childCount(), before + 1);
    auto* told = program->child(before);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->object(), &popup);
    EXPECT_EQ(told->role(), QAccessible::Dialog);
    EXPECT_EQ(program->indexOfChild(told), before);
    popup.hide();
    EXPECT_EQ(program->childCount(), before);
    EXPECT_EQ(program->child(before), nullptr);
}

TEST_F(SpokenRolesTest, aTextBecomesOneWhenItGetsItsWords) {
    auto& line = put<ElidedLabel>(scene.look, TextRole::body, &Tokens::text);
    EXPECT_EQ(spoken(line).role(), QAccessible::Client);
    line.setText("Now");
    EXPECT_EQ(spoken(line).role(), QAccessible::StaticText);
}

TEST_F(SpokenRolesTest, whatHoldsOthersIsAGroupOnlyWithAName) {
    auto& picker = put<SegmentedPicker>(scene.look, "Group", std::vector<QString>{"One", "Two"});
    auto& head = put<Headline>(scene.look);
    window.show();
    EXPECT_EQ(spoken(picker).role(), QAccessible::Grouping);
    EXPECT_EQ(spoken(picker).text(QAccessible::Name), "Group");
    EXPECT_EQ(spoken(picker).childCount(), 2);
    EXPECT_EQ(spoken(head).role(), QAccessible::Client);
}

TEST_F(SpokenRolesTest, aWindowIsAWindow) {
    window.setAccessibleName("Anything");
    EXPECT_EQ(spoken(window).role(), QAccessible::Window);
}

TEST_F(SpokenRolesTest, chartsAreChartsAsAWhole) {
    for (QWidget* chart : std::vector<QWidget*>{&put<DayChart>(scene.look), &put<MomentChart>(scene.look),
                                                &put<LoadChart>(scene.look)}) {
        EXPECT_EQ(spoken(*chart).role(), QAccessible::Chart);
        EXPECT_EQ(spoken(*chart).childCount(), 0);
    }
}

TEST_F(SpokenRolesTest, chartsTellTheirFigures) {
    auto& lines = *new LineChart(scene.look, "en_US", 60, &window);
    lines.show({.unit = "MB",
                .dates = {Date{Seconds{0}}, Date{Seconds{60}}},
                .series = {{.name = "Memory", .values = {100, 512}}, {.name = "Compressed", .values = {0, 1.5}}}});
    EXPECT_EQ(lines.accessibleDescription(), "Memory 512 MB, Compressed 1.5 MB");
    lines.show({.xLabel = "Time",
                .yLabel = "CPU",
                .unit = "%",
                .dates = {Date{Seconds{0}}},
                .series = {{.name = "CPU", .values = {7.5}}}});
    EXPECT_EQ(lines.accessibleDescription(), "Time, CPU: CPU 7.5 %");
    lines.show({.xLabel = "Time",
                .yLabel = "Memory",
                .unit = "MB",
                .seriesLabel = "Kind",
                .dates = {Date{Seconds{0}}},
                .series = {{.name = "Memory", .values = {512}}}});
    EXPECT_EQ(lines.accessibleDescription(), "Time, Memory, Kind: Memory 512 MB");
    auto& days = put<DayChart>(scene.look);
    days.show("Memory freed each day",
              {{.day = Date{Seconds{0}}, .memory = std::uint64_t{1} << 30U, .spoken = "Tuesday, November 17: 1 GB"},
               {.day = Date{Seconds{86'400}}, .spoken = "Wednesday, November 18: Zero KB"}},
              {}, std::nullopt);
    EXPECT_EQ(days.accessibleDescription(), "Day, Freed; Tuesday, November 17: 1 GB");
}

TEST_F(SpokenRolesTest, aChartWithoutFiguresTellsNone) {
    auto& lines = *new LineChart(scene.look, "en_US", 60, &window);
    lines.show({.unit = "MB", .series = {{.name = "Memory"}}});
    EXPECT_EQ(lines.accessibleDescription(), "");
}

TEST_F(SpokenRolesTest, whatPartsTwoPanesIsASeparator) {
    auto& panes = put<QSplitter>(Qt::Horizontal);
    panes.addWidget(new QWidget);
    panes.addWidget(new QWidget);
    window.show();
    auto* handle = panes.handle(1);
    EXPECT_EQ(spoken(*handle).role(), QAccessible::Separator);
}

TEST_F(SpokenRolesTest, listsHaveNames) {
    EXPECT_EQ(put<Sidebar>(scene.look).accessibleName(), "Sections");
    ProcessTable tree(scene.look, {});
    EXPECT_EQ(tree.accessibleName(), "Processes");
}

}  // namespace
}  // namespace tolvane::desktop
