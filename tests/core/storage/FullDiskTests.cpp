#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "base/files/Files.h"
#include "core/storage/Store.h"
#include "tests/fakes/SmallDisk.h"

namespace tolvane {
namespace {

using ::testing::SizeIs;

constexpr auto allEntries = std::numeric_limits<std::int64_t>::max();

std::string content(const std::string& path) { return Files::read(path).value_or("none"); }

TEST(FullDisk, theStoreOutlivesIt) {
    const fakes::SmallDisk disk;
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    const Store store(disk / "Tolvane");
    store.saveRules(Rule::presets());
    const ActivityEntry entry{.ruleName = "rule", .subject = std::string(300, 'x'), .outcome = "Terminated"};
    for (int count = 0; count < 500; ++count) store.append(entry);
    auto rules = Rule::presets();
    rules.front().name = std::string(20'000, 'x');
    store.saveRules(rules);
    EXPECT_EQ(store.loadRules(), Rule::presets());

    const auto log = content(store.directory + "/activity.jsonl");
    const auto lines = static_cast<std::size_t>(std::ranges::count(log, '\n'));
    EXPECT_LT(lines, 500U);
    EXPECT_EQ(log.back(), '\n');
    EXPECT_THAT(store.loadActivity(allEntries), SizeIs(lines));
    store.clearActivity();
    store.saveRules(rules);
    EXPECT_EQ(store.loadRules(), rules);
}

}  // namespace
}  // namespace tolvane
