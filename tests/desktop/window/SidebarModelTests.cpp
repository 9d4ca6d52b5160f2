#include "desktop/window/SidebarModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tolvane::desktop {
namespace {

class SidebarModelTest : public ::testing::Test {
protected:
    static std::vector<SidebarGroup> groups(const std::string& badge) {
        return {{.title = "Now",
                 .rows = {{.section = AppSection::processes, .title = "Processes", .icon = "list", .badge = {}},
                          {.section = AppSection::rules, .title = "Rules", .icon = "list", .badge = badge}}}};
    }

    SidebarModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SidebarModelTest, aChangedBadgeLeavesTheOtherRowsAlone) {
    model.show(groups("1"));
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.show(groups("2"));
    EXPECT_EQ(resets.count(), 0);
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.at(0).at(0).toModelIndex(), model.find(AppSection::rules));
    EXPECT_EQ(model.find(AppSection::rules).data(Qt::AccessibleTextRole).toString(), "Rules, 2");
}

TEST_F(SidebarModelTest, headingsCannotBeSelected) {
    model.show(groups({}));
    EXPECT_EQ(model.index(0).flags(), Qt::NoItemFlags);
    EXPECT_TRUE(model.index(1).flags().testFlag(Qt::ItemIsSelectable));
    model.show({});
    EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace tolvane::desktop
