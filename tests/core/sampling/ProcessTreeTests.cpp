#include "core/sampling/ProcessTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Rows from pairs of pid and parent.
std::vector<ProcRow> family(const std::vector<std::pair<Pid, Pid>>& links) {
    std::vector<ProcRow> rows;
    for (const auto& [pid, ppid] : links) {
        auto& row = rows.emplace_back();
        row.sample.pid = pid;
        row.sample.ppid = ppid;
    }
    return rows;
}

std::vector<Pid> descendants(Pid pid, const std::vector<ProcRow>& rows) { return ProcessTree(rows).descendants(pid); }

TEST(Descendants, areTheChildrenThenThoseOfTheLastChild) {
    const auto rows = family({{2, 1}, {3, 1}, {4, 2}, {5, 3}, {6, 3}, {7, 6}, {8, 5}});
    EXPECT_THAT(descendants(1, rows), ElementsAre(2, 3, 5, 6, 7, 8, 4));
}

TEST(Descendants, childrenComeInRowOrder) {
    EXPECT_THAT(descendants(1, family({{9, 1}, {3, 1}, {5, 1}})), ElementsAre(9, 3, 5));
}

TEST(Descendants, ofAProcessWithoutChildrenAreNone) {
    EXPECT_THAT(descendants(3, family({{2, 1}, {3, 1}})), IsEmpty());
    EXPECT_THAT(descendants(77, {}), IsEmpty());
}

TEST(Descendants, aGrandchildWhoseParentIsMissingIsNotFound) {
    EXPECT_THAT(descendants(1, family({{2, 1}, {4, 3}})), ElementsAre(2));
}

TEST(Descendants, aRingOfParentsEnds) {
    EXPECT_THAT(descendants(0, family({{0, 0}, {1, 0}})), ElementsAre(1));
    EXPECT_THAT(descendants(5, family({{5, 6}, {6, 5}})), ElementsAre(6));
    EXPECT_THAT(descendants(1, family({{5, 6}, {6, 5}, {5, 1}})), ElementsAre(5, 6, 5));
}

/// The pids above the row, each once, in the order of the walk.
std::vector<Pid> above(std::uint32_t row, ProcessTree::Repeated repeated, const std::vector<ProcRow>& rows) {
    std::vector<Pid> seen;
    ProcessTree(rows).anyAbove(row, repeated, [&](std::uint32_t each) {
        const Pid pid = rows[each].sample.pid;
        if (std::ranges::find(seen, pid) == seen.end()) seen.push_back(pid);
        return false;
    });
    return seen;
}

constexpr auto first = ProcessTree::Repeated::first;
constexpr auto last = ProcessTree::Repeated::last;

TEST(Ancestors, endAtTheFirstProcessAndAtAParentWithoutARow) {
    EXPECT_THAT(above(2, first, family({{1, 0}, {2, 1}, {4, 2}})), ElementsAre(2));
    EXPECT_THAT(above(1, first, family({{3, 77}, {4, 3}})), ElementsAre(3));
}

TEST(Ancestors, ofARingAreSeenOnce) {
    const auto rows = family({{5, 6}, {6, 7}, {7, 5}, {8, 5}, {9, 9}});
    EXPECT_THAT(above(0, first, rows), ElementsAre(6, 7)) << "the process itself is not above itself";
    EXPECT_THAT(above(3, first, rows), ElementsAre(5, 6, 7));
    EXPECT_THAT(above(4, first, rows), IsEmpty());
}

TEST(Ancestors, followTheFirstOrTheLastRowOfARepeatedPid) {
    const auto rows = family({{2, 1}, {3, 1}, {5, 2}, {5, 3}, {6, 5}});
    EXPECT_THAT(above(4, first, rows), ElementsAre(5, 2));
    EXPECT_THAT(above(4, last, rows), ElementsAre(5, 3));
}

TEST(ProcessTree, standsForEachPidAtItsFirstRow) {
    std::vector<ProcRow> rows(4);
    const Pid pids[] = {7, 3, 7, 9};
    const Pid parents[] = {3, 99, 9, 7};
    for (std::size_t index = 0; index < rows.size(); ++index) {
        rows[index].sample.pid = pids[index];
        rows[index].sample.ppid = parents[index];
    }
    const ProcessTree tree(rows);
    EXPECT_EQ(tree.place(7), 0);
    EXPECT_EQ(tree.placeOf(2), 0);
    EXPECT_EQ(tree.place(4), std::nullopt);
    EXPECT_EQ(tree.parent(0), 1);
    EXPECT_EQ(tree.parent(1), std::nullopt) << "its parent has no row";
    EXPECT_EQ(std::vector(tree.children(0).begin(), tree.children(0).end()), std::vector<std::uint32_t>{3});
    EXPECT_EQ(std::vector(tree.children(3).begin(), tree.children(3).end()), std::vector<std::uint32_t>{2});
    const std::vector<ProcRow> nobody;
    EXPECT_EQ(ProcessTree(nobody).place(1), std::nullopt);
}

}  // namespace
}  // namespace tolvane
