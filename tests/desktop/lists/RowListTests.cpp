#include "desktop/lists/RowList.h"

#include <gtest/gtest.h>

#include <QAccessible>

#include "desktop/history/HolderRows.h"
#include "desktop/lists/ValueRows.h"
#include "desktop/panel/PanelRows.h"
#include "desktop/stats/RuleBars.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class RowListTest : public ::testing::Test {
protected:
    RowListTest() { scene.look.install(); }

    static QAccessibleInterface& spoken(RowList& list) { return *QAccessible::queryAccessibleInterface(&list); }
    static QString nameOf(RowList& list, int row) { return spoken(list).child(row)->text(QAccessible::Name); }
    static QString valueOf(RowList& list, int row) { return spoken(list).child(row)->text(QAccessible::Value); }

    SampleScene scene;
    QWidget window;
};

TEST_F(RowListTest, eachRowIsAnItemWithItsNameAndValue) {
    ValueRows rows(scene.look, 4, &window);
    rows.show({{.label = "Compressed", .value = "1.5 GB", .remark = "3:1"}, {.label = "Swap", .value = "0 bytes"}});
    auto& list = spoken(rows);
    EXPECT_EQ(list.role(), QAccessible::List);
    ASSERT_EQ(list.childCount(), 2);
    auto* second = list.child(1);
    EXPECT_EQ(second->role(), QAccessible::ListItem);
    EXPECT_EQ(second->parent(), &list);
    EXPECT_EQ(list.indexOfChild(second), 1);
    EXPECT_EQ(nameOf(rows, 0), "Compressed 1.5 GB 3:1");
    EXPECT_EQ(valueOf(rows, 0), "1.5 GB");
    EXPECT_EQ(nameOf(rows, 1), "Swap 0 bytes");
    EXPECT_EQ(list.child(2), nullptr);
}

TEST_F(RowListTest, everyKindOfListHasItems) {
    PanelRows panel(scene.look, 60, "terminal", {}, &window);
    panel.show({{.appPath = {}, .title = "node", .tag = "Dev server", .quietFigure = "2 h", .figure = "1 GB"}});
    EXPECT_EQ(nameOf(panel, 0), "node Dev server 2 h 1 GB");
    EXPECT_EQ(valueOf(panel, 0), "1 GB");
    RuleBars bars(scene.look, &Tokens::used, &window);
    bars.show({{.rule = "Quit Mail", .figure = "512 MB", .share = 1}});
    EXPECT_EQ(nameOf(bars, 0), "Quit Mail 512 MB");
    EXPECT_EQ(valueOf(bars, 0), "512 MB");
    HolderRows holders(scene.look, &window);
    holders.show(
        {.title = "Largest", .rows = {{.title = "Mail", .appPath = {}, .figure = "2 GB"}}, .empty = "Nothing"});
    EXPECT_EQ(spoken(holders).text(QAccessible::Name), "Largest");
    EXPECT_EQ(nameOf(holders, 0), "Mail 2 GB");
    holders.show({.title = "Largest", .rows = {}, .empty = "Nothing"});
    EXPECT_EQ(nameOf(holders, 0), "Nothing");
}

TEST_F(RowListTest, anItemIsWhereItsRowIsDrawn) {
    RuleBars bars(scene.look, &Tokens::used, &window);
    bars.show({{.rule = "a", .figure = "1 MB", .share = 1}, {.rule = "b", .figure = "1 MB", .share = 1}});
    bars.resize(400, bars.sizeHint().height());
    window.show();
    const auto second = spoken(bars).child(1)->rect();
    EXPECT_EQ(second.topLeft(), bars.mapToGlobal(QPoint(0, bars.height() / 2)));
    EXPECT_EQ(second.size(), QSize(400, bars.height() / 2));
    EXPECT_EQ(spoken(bars).childAt(second.center().x(), second.center().y()), spoken(bars).child(1));
}

TEST_F(RowListTest, anItemWhoseRowIsGoneIsInvalid) {
    RuleBars bars(scene.look, &Tokens::used, &window);
    bars.show({{.rule = "a", .figure = "1 MB", .share = 1}, {.rule = "b", .figure = "1 MB", .share = 1}});
    auto* second = spoken(bars).child(1);
    bars.show({{.rule = "a", .figure = "1 MB", .share = 1}});
    EXPECT_EQ(spoken(bars).childCount(), 1);
    EXPECT_FALSE(second->isValid());
    EXPECT_EQ(second->text(QAccessible::Name), "");
}

}  // namespace
}  // namespace tolvane::desktop
