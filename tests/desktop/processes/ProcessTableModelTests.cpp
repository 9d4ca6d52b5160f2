#include "desktop/processes/ProcessTableModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <algorithm>
#include <random>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {
namespace {

TableRow process(std::string id, std::uint64_t memory = 0) {
    TableRow line;
    line.title = id;
    line.id = std::move(id);
    line.memory = memory;
    return line;
}

TableRow group(std::string id, std::vector<TableRow> children) {
    auto line = process(std::move(id));
    line.children = std::move(children);
    return line;
}

std::string cell(const TableRow& line, ProcessColumn column) {
    return column == ProcessColumn::memory ? std::to_string(line.memory) : std::string();
}

std::string text(const QModelIndex& index) { return utf8(index.data(Qt::DisplayRole).toString()); }

/// One row a line: two spaces per level, the name and the memory.
std::string printed(const QAbstractItemModel& model, const QModelIndex& parent = {}, int level = 0) {
    std::string out;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const auto name = model.index(row, 0, parent);
        out += std::string(static_cast<std::size_t>(2 * level), ' ') + text(name) + ' ' +
               text(model.index(row, 1, parent)) + '\n' + printed(model, name, level + 1);
    }
    return out;
}

std::string printed(const std::vector<TableRow>& lines, int level = 0) {
    std::string out;
    for (const auto& line : lines) {
        out += std::string(static_cast<std::size_t>(2 * level), ' ') + line.title + ' ' + std::to_string(line.memory) +
               '\n' + (line.children ? printed(*line.children, level + 1) : "");
    }
    return out;
}

struct Shown {
    ProcessTableModel model{cell};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    int resets = 0, inserts = 0, removes = 0, layouts = 0, changes = 0;

    Shown() {
        QObject::connect(&model, &ProcessTableModel::modelReset, &model, [this] { ++resets; });
        QObject::connect(&model, &ProcessTableModel::rowsInserted, &model, [this] { ++inserts; });
        QObject::connect(&model, &ProcessTableModel::rowsRemoved, &model, [this] { ++removes; });
        QObject::connect(&model, &ProcessTableModel::layoutChanged, &model, [this] { ++layouts; });
        QObject::connect(&model, &ProcessTableModel::dataChanged, &model, [this] { ++changes; });
    }
    void clear() { resets = inserts = removes = layouts = changes = 0; }
    QPersistentModelIndex row(const std::string& id) const {
        const auto found = model.find({id});
        return found.isEmpty() ? QPersistentModelIndex() : QPersistentModelIndex(found.front());
    }
};

TEST(ProcessTableModel, showsGroupsWithTheirRows) {
    Shown shown;
    shown.model.show({group("chrome", {process("a", 3), process("b", 2)}), process("xcode", 4)});
    EXPECT_EQ(printed(shown.model),
              "chrome 0\n"
              "  a 3\n"
              "  b 2\n"
              "xcode 4\n");
}

TEST(ProcessTableModel, insertsWhatIsNewAndRemovesWhatIsGone) {
    Shown shown;
    shown.model.show({process("a"), process("b"), process("c"), process("d")});
    shown.clear();
    shown.model.show({process("a"), process("x"), process("y"), process("d")});
    EXPECT_EQ(printed(shown.model), "a 0\nx 0\ny 0\nd 0\n");
    EXPECT_EQ(shown.inserts, 1);
    EXPECT_EQ(shown.removes, 1);
    EXPECT_EQ(shown.layouts, 0);
}

TEST(ProcessTableModel, tellsOfANewOrderOnce) {
    Shown shown;
    shown.model.show({process("a"), process("b"), process("c")});
    const auto b = shown.row("b");
    shown.clear();
    shown.model.show({process("c"), process("b"), process("a")});
    EXPECT_EQ(printed(shown.model), "c 0\nb 0\na 0\n");
    EXPECT_EQ(shown.layouts, 1);
    EXPECT_EQ(shown.inserts + shown.removes, 0);
    EXPECT_EQ(text(b), "b");
}

TEST(ProcessTableModel, anUnchangedOrderIsNoChangeOfLayout) {
    Shown shown;
    shown.model.show({process("a", 1), process("b", 2)});
    shown.clear();
    shown.model.show({process("a", 5), process("b", 6)});
    EXPECT_EQ(shown.layouts + shown.inserts + shown.removes, 0);
    EXPECT_EQ(shown.changes, 1);
    EXPECT_EQ(printed(shown.model), "a 5\nb 6\n");
}

TEST(ProcessTableModel, neverResets) {
    Shown shown;
    shown.model.show({process("a")});
    shown.model.show({});
    shown.model.show({group("g", {process("a")})});
    EXPECT_EQ(shown.resets, 0);
}

TEST(ProcessTableModel, formatsOnlyWhatIsAskedFor) {
    int formatted = 0;
    ProcessTableModel model([&](const TableRow&, ProcessColumn) {
        ++formatted;
        return std::string();
    });
    std::vector<TableRow> lines;
    for (int number = 0; number < 1000; ++number) lines.push_back(process(std::to_string(number)));
    model.show(lines);
    std::ranges::reverse(lines);
    model.show(lines);
    EXPECT_EQ(formatted, 0);
    (void)model.index(7, 1).data(Qt::DisplayRole);
    EXPECT_EQ(formatted, 1);
}

TEST(ProcessTableModel, survivesIdsThatStandTwice) {
    Shown shown;
    shown.model.show({process("a", 1), process("a", 2), process("b", 3)});
    EXPECT_EQ(printed(shown.model), "a 1\na 2\nb 3\n");
    shown.model.show({process("b", 3), process("a", 2), process("a", 1), process("a", 4)});
    EXPECT_EQ(printed(shown.model), "b 3\na 2\na 1\na 4\n");
}

TEST(ProcessTableModel, findsRowsAtEveryLevel) {
    Shown shown;
    shown.model.show({group("g", {process("a"), process("b")}), process("c")});
    const auto found = shown.model.find({"b", "c", "nobody"});
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(text(found[0]), "b");
    EXPECT_EQ(text(found[1]), "c");
}

TEST(ProcessTableModel, figuresStandRightUnderHeadsThatStandRight) {
    Shown shown;
    shown.model.show({process("a")});
    for (int column = 1; column < shown.model.columnCount(); ++column) {
        EXPECT_TRUE(shown.model.index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
        EXPECT_TRUE(shown.model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    }
    EXPECT_EQ(shown.model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).toInt(), Qt::AlignLeft);
}

TEST(ProcessTableModel, screenReadersHearTitleAndDetail) {
    Shown shown;
    auto line = process("node");
    line.detail = "~/Developer/docs-site";
    shown.model.show({line});
    EXPECT_EQ(shown.model.index(0, 0).data(Qt::AccessibleTextRole).toString(), "node, ~/Developer/docs-site");
}

class RandomTrees {
public:
    explicit RandomTrees(unsigned seed) : random_(seed) {}

    std::vector<TableRow> next() {
        std::vector<TableRow> lines;
        for (const auto number : some(12)) {
            const auto id = std::to_string(number);
            if (number % 3 != 0) {
                lines.push_back(process(id, random_() % 9));
                continue;
            }
            std::vector<TableRow> children;
            for (const auto child : some(6))
                children.push_back(process(id + '.' + std::to_string(child), random_() % 9));
            if (number % 2 == 0) children.push_back(group(id + ".deep", {process(id + ".deep.x", random_() % 9)}));
            lines.push_back(group(id, std::move(children)));
        }
        return lines;
    }

private:
    /// A random subset of the first numbers, sometimes shuffled.
    std::vector<unsigned> some(unsigned most) {
        std::vector<unsigned> numbers;
        for (unsigned number = 0; number < most; ++number) {
            if (random_() % 3 != 0) numbers.push_back(number);
        }
        if (random_() % 2 == 0) std::ranges::shuffle(numbers, random_);
        return numbers;
    }

    std::mt19937 random_;
};

struct Followed {
    std::string id;
    std::string parent;
    QPersistentModelIndex index;
};

void follow(const QAbstractItemModel& model, std::vector<Followed>& all, const QModelIndex& parent = {}) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const auto index = model.index(row, 0, parent);
        all.push_back({text(index), text(parent), QPersistentModelIndex(index)});
        follow(model, all, index);
    }
}

/// Any tree may follow any other: the model shows the new one, and persistent indexes still refer to the same rows.
TEST(ProcessTableModel, becomesEveryNextTreeWhileRowsKeepTheirHolders) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        RandomTrees trees(seed);
        Shown shown;
        for (int turn = 0; turn < 12; ++turn) {
            std::vector<Followed> before;
            follow(shown.model, before);
            const auto lines = trees.next();
            shown.model.show(lines);
            ASSERT_EQ(printed(shown.model), printed(lines)) << "seed " << seed;
            for (const auto& each : before) {
                const bool stays = !shown.model.find({each.id}).isEmpty();
                ASSERT_EQ(each.index.isValid(), stays) << each.id << " seed " << seed;
                if (!stays) continue;
                ASSERT_EQ(text(each.index), each.id);
                ASSERT_EQ(text(each.index.parent()), each.parent);
            }
        }
        EXPECT_EQ(shown.resets, 0);
    }
}

}  // namespace
}  // namespace tolvane::desktop
