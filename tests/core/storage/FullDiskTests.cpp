#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

#include "base/files/Files.h"
#include "base/files/Replacement.h"
#include "core/storage/Store.h"
#include "tests/fakes/SmallDisk.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::SizeIs;

constexpr auto allEntries = std::numeric_limits<std::int64_t>::max();

/// Files cannot grow past a size while this stands: a write is cut short there, as on a disk that fills up.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes) {
        ignored_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    ~SizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, ignored_);
    }

private:
    rlimit before_{};
    void (*ignored_)(int) = SIG_DFL;
};

std::string content(const std::string& path) { return Files::read(path).value_or("none"); }

TEST(FullDisk, aLineThatDoesNotFitIsTakenBack) {
    const fakes::TemporaryFolder folder;
    const auto path = folder / "log";
    ASSERT_TRUE(Files::append(path, "first\n"));
    {
        const SizeLimit limit(10);
        EXPECT_FALSE(Files::append(path, "second\n"));
        EXPECT_EQ(content(path), "first\n");
        EXPECT_TRUE(Files::append(path, "3rd\n"));
    }
    EXPECT_EQ(content(path), "first\n3rd\n");
}

TEST(FullDisk, aFirstLineThatDoesNotFitLeavesNothing) {
    const fakes::TemporaryFolder folder;
    const SizeLimit limit(3);
    EXPECT_FALSE(Files::append(folder / "log", "first\n"));
    EXPECT_EQ(content(folder / "log"), "");
}

TEST(FullDisk, aReplacementThatDoesNotFitLeavesTheOldFileAlone) {
    const fakes::TemporaryFolder folder;
    const auto path = folder / "file";
    folder.write("file", "old");
    {
        const SizeLimit limit(5);
        EXPECT_FALSE(Files::replace(path, "too long", Files::Access::usual, path + ".damaged"));
    }
    EXPECT_EQ(content(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(FullDisk, aReplacementKeepsNothingWhereItCannot) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "old");
    folder.write("file.damaged/inside", "");
    EXPECT_FALSE(Files::replace(folder / "file", "new", Files::Access::usual, folder / "file.damaged"));
    EXPECT_EQ(content(folder / "file"), "old");
}

TEST(FullDisk, aRunThatDiedLeavesNoTemporaryFileForLong) {
    const fakes::TemporaryFolder folder;
    folder.write(".file.new", "half of someth");
    EXPECT_TRUE(Files::replace(folder / "file", "new", Files::Access::usual));
    EXPECT_EQ(content(folder / "file"), "new");
    EXPECT_FALSE(std::filesystem::exists(folder / ".file.new"));
}

TEST(FullDisk, aReplacementThatIsNotPutInPlaceGoes) {
    const fakes::TemporaryFolder folder;
    {
        Files::Replacement replacement(folder / "file", Files::Access::usual);
        EXPECT_TRUE(replacement.write("new"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

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
