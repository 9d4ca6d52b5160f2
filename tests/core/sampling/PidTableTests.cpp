#include "core/sampling/PidTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace tolvane {
namespace {

struct Named {
    Pid pid = 0;
    std::string name;
};

std::string nameOf(PidTable<Named>& table, Pid pid) {
    const auto* found = table.find(pid);
    return found ? found->name : "none";
}

TEST(PidTable, findsWhatWasAddedOnceItIsSettled) {
    PidTable<Named> table;
    table.add({4, "four"});
    EXPECT_EQ(nameOf(table, 4), "none");
    table.settle();
    EXPECT_EQ(nameOf(table, 4), "four");
    EXPECT_EQ(nameOf(table, 5), "none");
}

TEST(PidTable, anyOrderOfAddingAndAskingIsRight) {
    PidTable<Named> table;
    for (const Pid pid : {9, 3, 7, 1}) table.add({pid, std::to_string(pid)});
    table.settle();
    for (const Pid pid : {1, 3, 7, 9, 9, 1, 7, 3}) EXPECT_EQ(nameOf(table, pid), std::to_string(pid));
    for (const Pid pid : {0, 2, 4, 8, 10, -1}) EXPECT_EQ(nameOf(table, pid), "none");
}

TEST(PidTable, ofARepeatedPidTheLastAddedHolds) {
    PidTable<Named> table;
    table.add({2, "first"});
    table.add({1, "one"});
    table.add({2, "second"});
    table.settle();
    EXPECT_EQ(nameOf(table, 2), "second");
    EXPECT_EQ(table.size(), 2U);
    table.add({2, "third"});
    table.settle();
    EXPECT_EQ(nameOf(table, 2), "third");
    EXPECT_EQ(table.size(), 2U);
}

TEST(PidTable, dropsWhatIsUnwantedAndKeepsWhatWasAdded) {
    PidTable<Named> table;
    for (const Pid pid : {1, 2, 3, 4}) table.add({pid, "old"});
    table.settle();
    table.add({0, "new"});
    table.settleWithout([](const Named& each) { return each.pid % 2 == 1; });
    EXPECT_EQ(table.size(), 3U);
    EXPECT_EQ(nameOf(table, 0), "new");
    EXPECT_EQ(nameOf(table, 1), "none");
    EXPECT_EQ(nameOf(table, 2), "old");
}

TEST(PidTable, clearForgetsAll) {
    PidTable<Named> table;
    table.add({1, "one"});
    table.settle();
    table.clear();
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(nameOf(table, 1), "none");
}

TEST(PidTable, behavesAsAMap) {
    std::mt19937 random(17);
    for (int run = 0; run < 200; ++run) {
        PidTable<Named> table;
        std::map<Pid, std::string> model;
        for (int round = 0; round < 6; ++round) {
            const auto odd = random() % 2;
            table.settleWithout([&](const Named& each) { return each.pid % 2 == static_cast<Pid>(odd); });
            std::erase_if(model, [&](const auto& each) { return each.first % 2 == static_cast<Pid>(odd); });
            for (auto count = random() % 20; count > 0; --count) {
                const auto pid = static_cast<Pid>(random() % 30);
                const auto name = std::to_string(random());
                table.add({pid, name});
                model[pid] = name;
            }
            table.settle();
            ASSERT_EQ(table.size(), model.size());
            for (int question = 0; question < 40; ++question) {
                const auto pid = static_cast<Pid>(random() % 30);
                ASSERT_EQ(nameOf(table, pid), model.contains(pid) ? model[pid] : "none");
            }
        }
    }
}

}  // namespace
}  // namespace tolvane
