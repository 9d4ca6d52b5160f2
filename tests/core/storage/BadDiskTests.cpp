#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>

#include "base/files/Files.h"
#include "core/history/Moment.h"
#include "core/json/Encode.h"
#include "core/rules/RulesDocument.h"
#include "core/storage/ActivityEntry.h"
#include "core/storage/Store.h"
#include "tests/fakes/SmallDisk.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto allEntries = std::numeric_limits<std::int64_t>::max();
constexpr Date now{Seconds{800'000'000}};
constexpr off_t gigabyte = off_t{1} << 30;

ActivityEntry entry(int number) {
    return {.id = UUID::random(),
            .date = now,
            .ruleName = "rule",
            .subject = std::to_string(number),
            .outcome = "Terminated"};
}

std::string content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Peak memory of this program in kilobytes.
long mostMemory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// Runs as an ordinary user while it exists.
class OrdinaryUser {
public:
    static constexpr uid_t nobody = 65534;

    OrdinaryUser() : changed_(::geteuid() == 0 && ::seteuid(nobody) == 0) {}
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (changed_) EXPECT_EQ(::seteuid(0), 0);
    }

private:
    bool changed_;
};

/// Makes every call of the store once, as the program does.
void useAll(const Store& store) {
    store.saveRules(Rule::presets());
    store.append(entry(1));
    store.append(Moment{.date = now});
    store.saveParked({});
    store.loadRules();
    store.loadActivity(allEntries);
    store.loadHistory(now);
    store.loadParked();
    store.clearActivity();
}

TEST(BadDisk, oneDamagedLineInAHundredLeavesTheOthers) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    constexpr int lines = 10'000;
    std::string text;
    std::size_t damaged = 0;
    for (int number = 0; number < lines; ++number) {
        auto line = *json::encode(entry(number));
        if (number % 100 == 7) {
            // Cut short, run together or overwritten.
            const int kind = number / 100 % 3;
            if (kind == 0) line.resize(line.size() / 2);
            if (kind == 1) line += line;
            if (kind == 2) line[line.size() / 3] = '\x01';
            ++damaged;
        }
        text += line + '\n';
    }
    folder.write("Tolvane/activity.jsonl", text);
    EXPECT_EQ(damaged, lines / 100U);
    const auto entries = store.loadActivity(allEntries);
    ASSERT_THAT(entries, SizeIs(lines - damaged));
    EXPECT_EQ(entries.front().subject, "9999");
    EXPECT_EQ(entries.back().subject, "0");
    EXPECT_EQ(content(folder / "Tolvane/activity.jsonl"), text);
}

TEST(BadDisk, aFileOfAGigabyteOfNothingCostsNoMemory) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    for (const auto* name : {"rules.json", "activity.jsonl", "history.jsonl", "parked.json"}) {
        folder.write("Tolvane/" + std::string(name), "");
        // The same code reads both logs, and some disks take long to read a gigabyte.
        const bool again = name == std::string_view("history.jsonl");
        ASSERT_EQ(::truncate((store.directory + "/" + name).c_str(), again ? gigabyte / 16 : gigabyte), 0);
    }
    const auto before = mostMemory();
    EXPECT_EQ(store.loadRules(), Rule::presets());
    EXPECT_THAT(store.loadActivity(allEntries), IsEmpty());
    EXPECT_THAT(store.loadHistory(now), IsEmpty());
    EXPECT_THAT(store.loadParked(), IsEmpty());
    EXPECT_LT(mostMemory() - before, 200'000);
    store.saveRules({});
    EXPECT_THAT(store.loadRules(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(store.directory + "/rules.json.damaged"), std::uintmax_t{gigabyte});
}

TEST(BadDisk, aHistoryThatNobodyTrimmedForYearsCostsNoMemory) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    constexpr std::size_t lines = 300'000;
    const auto old = *json::encode(Moment{.date = now - Seconds{100'000'000}}) + "\n";
    std::string text;
    text.reserve(lines * old.size());
    for (std::size_t number = 0; number < lines; ++number) text += old;
    const auto young = *json::encode(Moment{.date = now - Seconds{60}}) + "\n";
    folder.write("Tolvane/history.jsonl", young + text + young);
    text = {};
    const auto before = mostMemory();
    EXPECT_THAT(store.loadHistory(now), SizeIs(2));
    EXPECT_LT(mostMemory() - before, 20'000);
    EXPECT_EQ(content(folder / "Tolvane/history.jsonl"), young + young);
}

TEST(BadDisk, aLineThatNeverEndsIsPassedOver) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    const auto line = [](int number) { return *json::encode(entry(number)) + "\n"; };
    const std::string endless(40'000'000, '\xC3');
    folder.write("Tolvane/activity.jsonl", line(1) + line(2) + endless + "\n" + line(3));
    const auto entries = store.loadActivity(allEntries);
    ASSERT_THAT(entries, SizeIs(3));
    EXPECT_EQ(entries.front().subject, "3");
    EXPECT_THAT(store.loadActivity(2), SizeIs(2));
    folder.write("Tolvane/activity.jsonl", line(1) + endless);
    EXPECT_THAT(store.loadActivity(allEntries), SizeIs(1));
}

TEST(BadDisk, linksInPlaceOfFilesAreNeitherWrittenThroughNorDeletedBehind) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    for (const auto* name : {"rules.json", "activity.jsonl", "history.jsonl", "parked.json"}) {
        folder.write("elsewhere/" + std::string(name), "mine");
        std::filesystem::create_symlink(folder / ("elsewhere/" + std::string(name)), store.directory + "/" + name);
    }
    useAll(store);
    for (const auto* name : {"rules.json", "activity.jsonl", "history.jsonl", "parked.json"}) {
        EXPECT_EQ(folder.read("elsewhere/" + std::string(name)), "mine") << name;
    }
    EXPECT_EQ(store.loadRules(), Rule::presets());
}

TEST(BadDisk, foldersInPlaceOfFilesStopNothing) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    for (const auto* name : {"rules.json", "activity.jsonl", "history.jsonl", "parked.json"}) {
        std::filesystem::create_directories(store.directory + "/" + name);
    }
    useAll(store);
    EXPECT_TRUE(std::filesystem::is_directory(store.directory + "/activity.jsonl"));
    EXPECT_TRUE(std::filesystem::is_directory(store.directory + "/history.jsonl"));
}

TEST(BadDisk, aReadOnlyDiskKeepsWhatItHas) {
    const fakes::SmallDisk disk;
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    const Store store(disk / "Tolvane");
    store.saveRules({Rule{.id = UUID::random(), .name = "mine"}});
    store.append(entry(1));
    ASSERT_TRUE(disk.makeReadOnly());
    useAll(store);
    EXPECT_EQ(store.loadRules().front().name, "mine");
    EXPECT_THAT(store.loadActivity(allEntries), SizeIs(1));
    EXPECT_EQ(RulesDocument{}.write(disk / "Tolvane/copy"), "copy is on a disk that cannot be written to.");
}

TEST(BadDisk, aFullDiskSaysSoWhereItIsAsked) {
    const fakes::SmallDisk disk;
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    const std::vector<Rule> many(1000, Rule{.name = "a rule among many"});
    EXPECT_EQ(RulesDocument{many}.write(disk / "copy"), "copy does not fit on the disk.");
    EXPECT_FALSE(Files::exists(disk / "copy"));
    EXPECT_EQ(RulesDocument{}.write(disk / "copy"), std::nullopt);
}

TEST(BadDisk, aFolderThatTheUserMayNotWriteKeepsWhatItHas) {
    if (::geteuid() != 0) GTEST_SKIP() << "giving a folder away needs rights that this user has not";
    const fakes::TemporaryFolder folder;
    ASSERT_EQ(::chown(folder.path().c_str(), OrdinaryUser::nobody, OrdinaryUser::nobody), 0);
    const OrdinaryUser user;
    const Store store(folder / "Tolvane");
    store.saveRules({Rule{.id = UUID::random(), .name = "mine"}});
    ASSERT_EQ(::chmod(store.directory.c_str(), 0500), 0);
    useAll(store);
    EXPECT_EQ(store.loadRules().front().name, "mine");
    EXPECT_EQ(RulesDocument{}.write(store.directory + "/copy"), "copy is not accessible to this user.");
    ASSERT_EQ(::chmod(store.directory.c_str(), 0700), 0);
}

TEST(BadDisk, aFolderOfAnotherUserIsLeftAlone) {
    if (::geteuid() != 0) GTEST_SKIP() << "a folder of another user needs rights that this user has not";
    const fakes::TemporaryFolder folder;
    const std::string path = folder / "Tolvane";
    Store(path).saveRules({Rule{.id = UUID::random(), .name = "theirs"}});
    {
        const OrdinaryUser user;
        const Store store(path);
        useAll(store);
        EXPECT_EQ(store.loadRules(), Rule::presets());
        EXPECT_EQ(RulesDocument::read(path + "/rules.json").failure(), "rules.json is not accessible to this user.");
    }
    EXPECT_EQ(Store(path).loadRules().front().name, "theirs");
}

TEST(RulesDocument, saysWhatStandsThereInstead) {
    const fakes::TemporaryFolder folder;
    const auto failure = [&](std::string_view name) { return RulesDocument::read(folder / name).failure(); };
    EXPECT_EQ(failure("a"), "a does not exist.");
    std::filesystem::create_directory(folder / "b");
    EXPECT_EQ(failure("b"), "b is a folder.");
    ASSERT_EQ(::mkfifo((folder / "c").c_str(), 0600), 0);
    EXPECT_EQ(failure("c"), "c is not a regular file.");
    folder.write("d", "");
    ASSERT_EQ(::truncate((folder / "d").c_str(), gigabyte), 0);
    EXPECT_EQ(failure("d"), "d is too large.");
    folder.write("e", "{}");
    EXPECT_EQ(failure("e"), "e is not a Tolvane rules file.");
    std::filesystem::create_symlink("f", folder / "f");
    EXPECT_EQ(failure("f"), "f: Too many levels of symbolic links.");
}

TEST(RulesDocument, makesTheFoldersThatAreMissingAndReadsBack) {
    const fakes::TemporaryFolder folder;
    EXPECT_EQ(RulesDocument{Rule::presets()}.write(folder / "a/b/rules"), std::nullopt);
    EXPECT_EQ(RulesDocument::read(folder / "a/b/rules")->rules, Rule::presets());
    EXPECT_NE(RulesDocument{}.write(folder / "a/b/rules/c/d"), std::nullopt);
}

}  // namespace
}  // namespace tolvane
