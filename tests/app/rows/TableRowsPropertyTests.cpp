#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "app/rows/TableRow.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

/// Properties of any machine, tried on random machines from a printed seed.
class TableRowProperties : public ::testing::TestWithParam<unsigned> {
protected:
    TableRowProperties() : random_(GetParam()) {
        const auto count = below(200);
        for (Pid pid = 1; pid <= static_cast<Pid>(count); ++pid) rows_.push_back(anyRow(pid));
    }

    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_); }

    ProcRow anyRow(Pid pid) {
        auto made = fakes::row(pid, "name" + std::to_string(below(8)), below(1 << 20));
        made.sample.compressed = below(1 << 20);
        made.sample.swapIns = below(1 << 10);
        made.cpuPercent = static_cast<double>(below(800)) / 4;
        made.unusedSince = Date{Seconds{static_cast<double>(below(10))}};
        made.sample.startTime = Date{Seconds{static_cast<double>(below(10))}};
        if (below(3) == 0) made.appPath = Text("/app" + std::to_string(below(5)));
        if (below(3) == 0) made.project = Text("/project" + std::to_string(below(5)));
        if (below(5) == 0) made.claudeSession = Text("session" + std::to_string(below(3)));
        return made;
    }

    std::vector<TableRow> build(Grouping grouping) const { return TableRow::build(rows_, grouping, 1.7, RowNames{}); }

    std::vector<RowOrder> anyOrder() {
        std::vector<RowOrder> order(below(4));
        for (auto& step : order) step = {static_cast<RowField>(below(7)), below(2) == 0};
        return order;
    }

    std::mt19937 random_;
    std::vector<ProcRow> rows_;
};

std::vector<Pid> leafPids(const std::vector<TableRow>& rows) {
    std::vector<Pid> pids;
    for (const auto& row : rows) {
        const auto below = row.children ? leafPids(*row.children) : row.pids;
        pids.insert(pids.end(), below.begin(), below.end());
    }
    return pids;
}

TEST_P(TableRowProperties, everyPidStandsExactlyOnce) {
    for (const auto& each : groupings) {
        auto pids = leafPids(build(each.grouping));
        std::ranges::sort(pids);
        ASSERT_EQ(pids.size(), rows_.size());
        for (std::size_t index = 0; index < pids.size(); ++index) EXPECT_EQ(pids[index], rows_[index].id());
    }
}

TEST_P(TableRowProperties, groupsAreTheSumsOfTheirChildren) {
    for (const auto& each : groupings) {
        for (const auto& row : build(each.grouping)) {
            if (!row.children) continue;
            std::uint64_t memory = 0;
            std::uint64_t inRAM = 0;
            double cpu = 0;
            for (const auto& child : *row.children) {
                memory += child.memory;
                inRAM += child.inRAM;
                cpu += child.cpu;
                EXPECT_LE(child.unusedSince, row.unusedSince);
                EXPECT_GE(child.started, row.started);
            }
            EXPECT_EQ(row.memory, memory);
            EXPECT_EQ(row.inRAM, inRAM);
            EXPECT_DOUBLE_EQ(row.cpu, cpu);
            EXPECT_EQ(row.pids, leafPids(*row.children));
        }
    }
}

TEST_P(TableRowProperties, idsAreTheirOwn) {
    for (const auto& each : groupings) {
        const auto rows = build(each.grouping);
        std::set<std::string> ids;
        std::size_t count = 0;
        for (const auto& row : rows) {
            ids.insert(row.id);
            ++count;
            if (!row.children) continue;
            for (const auto& child : *row.children) ids.insert(child.id);
            count += row.children->size();
        }
        EXPECT_EQ(ids.size(), count);
    }
}

TEST_P(TableRowProperties, sortingKeepsEveryRowAndItsValues) {
    for (const auto& each : groupings) {
        const auto before = build(each.grouping);
        auto after = before;
        const auto order = anyOrder();
        TableRow::sort(after, order);
        ASSERT_EQ(after.size(), before.size());
        const auto byId = [](const TableRow& a, const TableRow& b) { return a.id < b.id; };
        auto originals = before;
        for (auto& row : originals) row = row.sorted(order);
        std::ranges::sort(originals, byId);
        auto sorted = after;
        std::ranges::sort(sorted, byId);
        EXPECT_EQ(sorted, originals);
        auto again = after;
        TableRow::sort(again, order);
        EXPECT_EQ(again, after);
    }
}

TEST_P(TableRowProperties, selectionFindsWhatSearchingRowByRowFinds) {
    for (const auto& each : groupings) {
        const auto rows = build(each.grouping);
        std::set<std::string> ids{"gone"};
        for (const auto& process : rows_) {
            if (below(2) == 0) ids.insert("pid:" + std::to_string(process.id()));
        }
        for (const auto& row : rows) {
            if (below(2) == 0) ids.insert(row.id);
        }
        const auto found = TableRow::selected(ids, rows);
        EXPECT_EQ(found.size(), ids.size() - 1);
        EXPECT_TRUE(std::ranges::is_sorted(found, std::greater{}, &TableRow::memory));
        for (const auto& row : found) EXPECT_TRUE(ids.contains(row.id));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TableRowProperties, ::testing::Range(0U, 24U));

}  // namespace
}  // namespace tolvane
