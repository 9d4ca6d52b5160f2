#include "core/storage/Store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

#include "core/history/Moment.h"
#include "core/json/Encode.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto allEntries = std::numeric_limits<std::int64_t>::max();
constexpr Date now{Seconds{800'000'000}};

class StoreTest : public ::testing::Test {
protected:
    std::string path(std::string_view name) const { return folder_ / ("Tolvane/" + std::string(name)); }
    std::string content(std::string_view name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void put(std::string_view name, std::string_view text) const {
        folder_.write("Tolvane/" + std::string(name), text);
    }
    bool exists(std::string_view name) const {
        return std::filesystem::symlink_status(path(name)).type() != std::filesystem::file_type::not_found;
    }
    mode_t rights(std::string_view name) const {
        struct stat status{};
        EXPECT_EQ(::stat(path(name).c_str(), &status), 0);
        return status.st_mode & 07777U;
    }
    ino_t inode(std::string_view name) const {
        struct stat status{};
        EXPECT_EQ(::stat(path(name).c_str(), &status), 0);
        return status.st_ino;
    }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(store_.directory)) {
            names.push_back(entry.path().filename().string());
        }
        std::ranges::sort(names);
        return names;
    }

    fakes::TemporaryFolder folder_;
    Store store_{folder_ / "Tolvane"};
};

ActivityEntry entry(std::string subject) {
    return {.id = UUID::random(), .date = now, .ruleName = "rule", .subject = subject, .outcome = "Terminated"};
}

Moment moment(double age, std::uint64_t used = 1) { return {.date = now - Seconds{age}, .used = used}; }

std::string line(const auto& record) { return *json::encode(record) + "\n"; }

std::vector<std::string> subjects(const std::vector<ActivityEntry>& entries) {
    std::vector<std::string> all;
    for (const auto& one : entries) all.push_back(one.subject.str());
    return all;
}

std::vector<std::uint64_t> used(const std::vector<Moment>& moments) {
    std::vector<std::uint64_t> all;
    for (const auto& one : moments) all.push_back(one.used);
    return all;
}

TEST_F(StoreTest, aFirstStartGivesTheDefaultsAndWritesNothing) {
    EXPECT_EQ(store_.loadRules(), Rule::presets());
    EXPECT_THAT(store_.loadActivity(allEntries), IsEmpty());
    EXPECT_THAT(store_.loadHistory(now), IsEmpty());
    EXPECT_THAT(store_.loadParked(), IsEmpty());
    EXPECT_THAT(files(), IsEmpty());
}

// The folder

TEST_F(StoreTest, makesItsFolderWithThoseAboveForItsOwnerAlone) {
    const Store deep(folder_ / "a/b/Tolvane");
    EXPECT_TRUE(std::filesystem::is_directory(deep.directory));
    struct stat status{};
    ASSERT_EQ(::stat(deep.directory.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0700U);
}

TEST_F(StoreTest, takesRightsFromAFolderThatIsThere) {
    ASSERT_EQ(::chmod(store_.directory.c_str(), 0755), 0);
    const Store again(store_.directory);
    EXPECT_EQ(rights(""), 0700U);
}

TEST_F(StoreTest, livesWithoutItsFolder) {
    folder_.write("file", "");
    const Store nowhere(folder_ / "file/Tolvane");
    nowhere.saveRules({});
    nowhere.saveParked({});
    nowhere.append(entry("a"));
    nowhere.append(moment(0));
    nowhere.clearActivity();
    EXPECT_EQ(nowhere.loadRules(), Rule::presets());
    EXPECT_THAT(nowhere.loadActivity(allEntries), IsEmpty());
    EXPECT_THAT(nowhere.loadHistory(now), IsEmpty());
    EXPECT_THAT(nowhere.loadParked(), IsEmpty());
}

// Rules

TEST_F(StoreTest, givesSavedRulesBackInOrder) {
    auto rules = Rule::presets();
    std::ranges::reverse(rules);
    store_.saveRules(rules);
    EXPECT_EQ(store_.loadRules(), rules);
    store_.saveRules({});
    EXPECT_THAT(store_.loadRules(), IsEmpty());
    EXPECT_THAT(files(), ElementsAre("rules.json"));
}

TEST_F(StoreTest, writesRulesPrettilyWithSortedKeys) {
    const std::vector rules = {Rule::presets()[1]};
    store_.saveRules(rules);
    EXPECT_EQ(content("rules.json"), *json::encode(rules, json::Style::pretty));
}

TEST_F(StoreTest, damagedRulesAreLeftUntilTheFirstSaveAndThenKeptBeside) {
    for (const char* damaged : {"", "{", "[{}]", "{\"rules\":[]}", "[\xFF]"}) {
        put("rules.json", damaged);
        EXPECT_EQ(store_.loadRules(), Rule::presets());
        EXPECT_EQ(content("rules.json"), damaged);
        store_.saveRules({});
        EXPECT_EQ(content("rules.json"), "[\n\n]");
        EXPECT_EQ(content("rules.json.damaged"), damaged);
        store_.saveRules(Rule::presets());
        EXPECT_EQ(content("rules.json.damaged"), damaged);
    }
}

TEST_F(StoreTest, soundRulesAreNotKeptBeside) {
    store_.saveRules(Rule::presets());
    store_.saveRules({});
    EXPECT_THAT(files(), ElementsAre("rules.json"));
}

TEST_F(StoreTest, oneDamagedRuleFailsTheFile) {
    auto text = *json::encode(Rule::presets(), json::Style::pretty);
    text.replace(text.rfind("relaunch"), 8, "reinvent");
    put("rules.json", text);
    EXPECT_EQ(store_.loadRules(), Rule::presets());
    EXPECT_NE(store_.loadRules().front().id, UUID());
}

TEST_F(StoreTest, aFolderInPlaceOfTheRulesIsMovedAside) {
    std::filesystem::create_directory(path("rules.json"));
    EXPECT_EQ(store_.loadRules(), Rule::presets());
    store_.saveRules({});
    EXPECT_THAT(store_.loadRules(), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_directory(path("rules.json.damaged")));
}

TEST_F(StoreTest, replacesALinkInsteadOfWritingThroughIt) {
    folder_.write("elsewhere", "[]");
    std::filesystem::create_symlink(folder_ / "elsewhere", path("rules.json"));
    EXPECT_THAT(store_.loadRules(), IsEmpty());
    store_.saveRules(Rule::presets());
    EXPECT_FALSE(std::filesystem::is_symlink(path("rules.json")));
    EXPECT_EQ(store_.loadRules(), Rule::presets());
    EXPECT_EQ(std::filesystem::file_size(folder_ / "elsewhere"), 2U);
}

TEST_F(StoreTest, aLinkInPlaceOfTheTemporaryFileIsNotFollowed) {
    folder_.write("elsewhere", "precious");
    std::filesystem::create_symlink(folder_ / "elsewhere", path(".rules.json.new"));
    store_.saveRules({});
    EXPECT_THAT(store_.loadRules(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(folder_ / "elsewhere"), 8U);
}

TEST_F(StoreTest, aFileKeepsTheRightsThatItsOwnerGaveIt) {
    const mode_t mask = ::umask(022);
    store_.saveRules({});
    EXPECT_EQ(rights("rules.json"), 0644U);
    ASSERT_EQ(::chmod(path("rules.json").c_str(), 0600), 0);
    store_.saveRules({});
    EXPECT_EQ(rights("rules.json"), 0600U);
    ::umask(mask);
}

// The log

TEST_F(StoreTest, givesTheLogNewestFirst) {
    for (const char* subject : {"a", "b", "c"}) store_.append(entry(subject));
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("c", "b", "a"));
    EXPECT_THAT(subjects(store_.loadActivity(2)), ElementsAre("c", "b"));
    EXPECT_THAT(subjects(store_.loadActivity(3)), ElementsAre("c", "b", "a"));
    EXPECT_THAT(store_.loadActivity(0), IsEmpty());
}

TEST_F(StoreTest, givesEntriesBackWhole) {
    const ActivityEntry whole{.id = UUID::random(),
                              .date = now + Seconds{0.1},
                              .ruleName = "Ärger/\"x\"",
                              .subject = "a\nb",
                              .outcome = "",
                              .memory = UINT64_MAX,
                              .dryRun = true,
                              .subjectKey = Text("pid:1:2.0"),
                              .compressed = 0,
                              .freed = 1,
                              .freedCompressed = 2};
    store_.append(whole);
    EXPECT_THAT(store_.loadActivity(allEntries), ElementsAre(whole));
}

TEST_F(StoreTest, appendsOneLineOfCompactText) {
    const auto first = entry("a");
    const auto second = entry("b");
    store_.append(first);
    store_.append(second);
    EXPECT_EQ(content("activity.jsonl"), line(first) + line(second));
}

TEST_F(StoreTest, aDamagedLineOfTheLogIsPassedOverAndStays) {
    const std::string text = line(entry("a")) + "{\"id\":1}\n\n \n" + line(entry("b")) + "nonsense\n";
    put("activity.jsonl", text);
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("b", "a"));
    EXPECT_EQ(content("activity.jsonl"), text);
}

TEST_F(StoreTest, aDamagedLineCountsForTheLimit) {
    put("activity.jsonl", line(entry("a")) + line(entry("b")) + "nonsense\n\n\n");
    EXPECT_THAT(subjects(store_.loadActivity(2)), ElementsAre("b"));
    EXPECT_THAT(subjects(store_.loadActivity(1)), IsEmpty());
}

TEST_F(StoreTest, aLastLineWithoutItsFeedCountsAndSwallowsTheNext) {
    auto text = line(entry("a")) + line(entry("b"));
    text.pop_back();
    put("activity.jsonl", text);
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("b", "a"));
    store_.append(entry("c"));
    store_.append(entry("d"));
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("d", "a"));
}

TEST_F(StoreTest, linesEndAtTheLineFeedAlone) {
    auto text = line(entry("a"));
    text.insert(text.size() - 1, "\r");
    put("activity.jsonl", text + "\xE2\x80\xA8\n" + line(entry("b")));
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("b", "a"));
}

TEST_F(StoreTest, aLogThatIsNotUTF8IsEmptyAndGoesOn) {
    put("activity.jsonl", line(entry("a")) + "\xFF\n" + line(entry("b")));
    EXPECT_THAT(store_.loadActivity(allEntries), IsEmpty());
    EXPECT_THAT(store_.loadActivity(1), IsEmpty());
    store_.append(entry("c"));
    EXPECT_TRUE(content("activity.jsonl").ends_with("\"outcome\":\"Terminated\",\"memory\":0,\"dryRun\":false}\n"));
}

TEST_F(StoreTest, clearsTheLogAndBeginsItAnew) {
    store_.clearActivity();
    EXPECT_THAT(files(), IsEmpty());
    store_.append(entry("a"));
    store_.clearActivity();
    EXPECT_THAT(files(), IsEmpty());
    store_.append(entry("b"));
    EXPECT_THAT(subjects(store_.loadActivity(allEntries)), ElementsAre("b"));
}

TEST_F(StoreTest, doesNotAppendThroughALink) {
    folder_.write("elsewhere", "x");
    std::filesystem::create_symlink(folder_ / "elsewhere", path("activity.jsonl"));
    store_.append(entry("a"));
    EXPECT_EQ(std::filesystem::file_size(folder_ / "elsewhere"), 1U);
}

TEST_F(StoreTest, waitsForNoPipe) {
    ASSERT_EQ(::mkfifo(path("activity.jsonl").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(path("rules.json").c_str(), 0600), 0);
    store_.append(entry("a"));
    EXPECT_THAT(store_.loadActivity(allEntries), IsEmpty());
    EXPECT_EQ(store_.loadRules(), Rule::presets());
}

TEST_F(StoreTest, readsLinesOfAnyLength) {
    std::string text;
    std::vector<std::string> expected;
    for (const std::size_t length : {10U, 262'000U, 262'144U, 300'000U, 1'500'000U, 3U}) {
        expected.push_back(std::string(length, 'x') + "é");
        text += line(entry(expected.back()));
    }
    put("activity.jsonl", text);
    std::ranges::reverse(expected);
    EXPECT_EQ(subjects(store_.loadActivity(allEntries)), expected);
    EXPECT_THAT(store_.loadActivity(2), SizeIs(2));
}

TEST_F(StoreTest, readsManyLinesAcrossChunks) {
    std::string text;
    std::vector<std::string> expected;
    for (int index = 0; index < 5000; ++index) {
        expected.push_back("é🙂" + std::to_string(index));
        text += line(entry(expected.back()));
    }
    text.pop_back();
    put("activity.jsonl", text);
    std::ranges::reverse(expected);
    EXPECT_EQ(subjects(store_.loadActivity(allEntries)), expected);
    expected.resize(1234);
    EXPECT_EQ(subjects(store_.loadActivity(1234)), expected);
}

TEST_F(StoreTest, entriesShareTheirTexts) {
    for (int index = 0; index < 3; ++index) store_.append(entry("a"));
    const auto entries = store_.loadActivity(allEntries);
    ASSERT_THAT(entries, SizeIs(3));
    EXPECT_EQ(entries[0].ruleName.view().data(), entries[2].ruleName.view().data());
    EXPECT_EQ(entries[0].outcome.view().data(), entries[1].outcome.view().data());
}

// The history

TEST_F(StoreTest, givesTheHistoryInFileOrder) {
    store_.append(moment(300, 1));
    store_.append(moment(200, 2));
    store_.append(moment(-100, 3));
    EXPECT_THAT(used(store_.loadHistory(now)), ElementsAre(1, 2, 3));
}

TEST_F(StoreTest, aMomentOfExactlyADayIsKept) {
    put("history.jsonl", line(moment(86400.1, 1)) + line(moment(86400, 2)));
    EXPECT_THAT(used(store_.loadHistory(now)), ElementsAre(2));
    EXPECT_EQ(content("history.jsonl"), line(moment(86400, 2)));
}

/// A line that begins with an old date is skipped unread, unless its rest could change the result.
TEST_F(StoreTest, momentsThatOnlyLookOldAreKept) {
    const auto withFirst = [](std::string_view first, std::string_view last) {
        return "{\"date\":" + std::string(first) +
               ",\"total\":1,\"used\":2,\"compressed\":3,\"swapUsed\":4,\"pressure\":1,\"cpu\":0.5,\"cores\":8,"
               "\"holders\":[]" +
               std::string(last) + "}\n";
    };
    put("history.jsonl", withFirst("1", ",\"date\":799999990") + withFirst("2.5", ",\"d\\u0061te\":799999990") +
                             withFirst("8e8", "") + withFirst("0.8E9", "") + withFirst("799913600", ""));
    EXPECT_THAT(store_.loadHistory(now), SizeIs(5));
    put("history.jsonl", withFirst("1", "") + withFirst("799913599.999999", "") + withFirst("1", ",\"other\":1") +
                             withFirst("-1", "") + withFirst("799913600", ""));
    EXPECT_THAT(store_.loadHistory(now), SizeIs(1));
}

TEST_F(StoreTest, aHistoryWithNothingToDropIsNotTouched) {
    put("history.jsonl", "\n" + line(moment(10)) + "\n\n" + line(moment(5)));
    const auto before = inode("history.jsonl");
    EXPECT_THAT(store_.loadHistory(now), SizeIs(2));
    EXPECT_EQ(inode("history.jsonl"), before);
    EXPECT_EQ(content("history.jsonl"), "\n" + line(moment(10)) + "\n\n" + line(moment(5)));
}

TEST_F(StoreTest, aHistoryOfOldMomentsBecomesAnEmptyFile) {
    put("history.jsonl", line(moment(90000)) + line(moment(100000)));
    EXPECT_THAT(store_.loadHistory(now), IsEmpty());
    EXPECT_TRUE(exists("history.jsonl"));
    EXPECT_EQ(content("history.jsonl"), "");
    EXPECT_THAT(files(), ElementsAre("history.jsonl"));
}

TEST_F(StoreTest, aRewriteKeepsTheLinesAsTheyStood) {
    auto later = line(moment(10, 1));
    later.insert(1, R"( "of a later version" : [1, 2] , )");
    const auto other = line(moment(20, 2));
    auto last = line(moment(5, 3));
    last.pop_back();
    put("history.jsonl", line(moment(90000)) + later + "\n\n" + other + "damaged\n" + line(moment(90000)) + last);
    EXPECT_THAT(used(store_.loadHistory(now)), ElementsAre(1, 2, 3));
    EXPECT_EQ(content("history.jsonl"), later + other + last + "\n");
    EXPECT_THAT(used(store_.loadHistory(now)), ElementsAre(1, 2, 3));
}

TEST_F(StoreTest, aHistoryThatIsNotUTF8IsEmptyAndStays) {
    const auto text = line(moment(90000)) + "\xFF\n";
    put("history.jsonl", text);
    EXPECT_THAT(store_.loadHistory(now), IsEmpty());
    EXPECT_EQ(content("history.jsonl"), text);
}

TEST_F(StoreTest, readsHistoryOfOlderVersions) {
    put("history.jsonl",
        "{\"date\":799999990,\"total\":1,\"used\":2,\"compressed\":3,\"swapUsed\":4,\"pressure\":3,"
        "\"cpu\":0.5,\"cores\":8,\"holders\":[]}\n");
    const auto moments = store_.loadHistory(now);
    ASSERT_THAT(moments, SizeIs(1));
    EXPECT_EQ(moments[0].swapIns, std::nullopt);
    EXPECT_EQ(moments[0].performance, std::nullopt);
    EXPECT_EQ(moments[0].pressure, 3);
}

TEST_F(StoreTest, aMomentWithoutATextIsLost) {
    store_.append(Moment{.cpu = std::numeric_limits<double>::infinity()});
    EXPECT_FALSE(exists("history.jsonl"));
}

TEST_F(StoreTest, rewritesALongHistory) {
    std::string kept;
    for (int index = 0; index < 20000; ++index) kept += line(moment(index % 80000, 7));
    put("history.jsonl", line(moment(90000)) + kept);
    EXPECT_THAT(store_.loadHistory(now), SizeIs(20000));
    EXPECT_EQ(content("history.jsonl"), kept);
}

// Parked projects

TEST_F(StoreTest, givesParkedProjectsBack) {
    const std::vector parked = {ParkedProject{
        .root = "/home/ada/shop",
        .date = now,
        .commands = {{.executable = "/opt/node", .args = {"node"}, .env = {"TOKEN=x"}, .cwd = "/home/ada/shop"}},
        .containers = {"c1"}}};
    store_.saveParked(parked);
    EXPECT_EQ(store_.loadParked(), parked);
}

TEST_F(StoreTest, parkedProjectsAreForTheirOwnerAlone) {
    const mode_t mask = ::umask(0);
    store_.saveParked({});
    EXPECT_EQ(rights("parked.json"), 0600U);
    ASSERT_EQ(::chmod(path("parked.json").c_str(), 0666), 0);
    store_.saveParked({});
    EXPECT_EQ(rights("parked.json"), 0600U);
    ::umask(mask);
}

TEST_F(StoreTest, damagedParkedProjectsAreKeptBeside) {
    put("parked.json", "[{}]");
    EXPECT_THAT(store_.loadParked(), IsEmpty());
    store_.saveParked({});
    EXPECT_EQ(content("parked.json"), "[]");
    EXPECT_EQ(content("parked.json.damaged"), "[{}]");
}

TEST_F(StoreTest, filesOfHopelessSizeAreDamaged) {
    put("rules.json", "[]");
    ASSERT_EQ(::truncate(path("rules.json").c_str(), off_t{1} << 40), 0);
    EXPECT_EQ(store_.loadRules(), Rule::presets());
}

}  // namespace
}  // namespace tolvane
