#include "app/model/Observed.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane {
namespace {

TEST(Observed, tellsItsObserversOfAChange) {
    Observed<int> value(1);
    int changes = 0;
    const auto notifier = value.onChange([&] { ++changes; });
    value.set(2);
    EXPECT_EQ(*value, 2);
    EXPECT_EQ(changes, 1);
}

TEST(Observed, anEqualValueIsSilent) {
    Observed<std::vector<int>> value(std::vector{1, 2});
    int changes = 0;
    const auto notifier = value.onChange([&] { ++changes; });
    value.set({1, 2});
    EXPECT_EQ(changes, 0);
}

TEST(Observed, theSideEffectRunsAtEveryAssignmentAlsoOfAnEqualValue) {
    Observed<int> value(1);
    std::vector<int> written;
    value.setEffect([&](int each) { written.push_back(each); });
    value.set(1);
    value.set(2);
    value.set(2);
    EXPECT_EQ(written, (std::vector{1, 2, 2}));
}

TEST(Observed, valuesBeforeTheSideEffectHadNone) {
    Observed<int> value(1);
    value.set(5);
    int runs = 0;
    value.setEffect([&](int) { ++runs; });
    EXPECT_EQ(runs, 0);
}

TEST(Observed, anObserverSeesTheNewValue) {
    Observed<int> value(1);
    int seen = 0;
    const auto notifier = value.onChange([&] { seen = *value; });
    value.set(7);
    EXPECT_EQ(seen, 7);
}

TEST(Observed, anObserverThatWentHearsNothing) {
    Observed<int> value(1);
    int changes = 0;
    {
        const auto notifier = value.onChange([&] { ++changes; });
    }
    value.set(2);
    EXPECT_EQ(changes, 0);
}

TEST(Observed, anUpdateChangesTheValueWhereItStands) {
    Observed<std::vector<int>> value(std::vector{1, 2, 3});
    const int* place = value->data();
    int changes = 0;
    int written = 0;
    const auto notifier = value.onChange([&] { ++changes; });
    value.setEffect([&](const auto&) { ++written; });
    value.update([](std::vector<int>& list) { list[1] = 9; });
    EXPECT_EQ(*value, (std::vector{1, 9, 3}));
    EXPECT_EQ(value->data(), place);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(written, 1);
}

TEST(Observed, aBindingThatReadItFollowsIt) {
    Observed<int> value(1);
    QProperty<int> doubled;
    doubled.setBinding([&] { return 2 * *value; });
    EXPECT_EQ(doubled.value(), 2);
    value.set(4);
    EXPECT_EQ(doubled.value(), 8);
    value.update([](int& each) { each = 5; });
    EXPECT_EQ(doubled.value(), 10);
}

}  // namespace
}  // namespace tolvane
