#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "core/rules/ClaudeRoster.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* rosterFile = ".claude/daemon/roster.json";

Result<std::vector<ClaudeWorker>, json::Error> parse(std::string_view text) {
    return ClaudeRoster::parse(text, [](const std::string& shortID) { return shortID == "asked"; });
}

TEST(ClaudeRoster, readsEveryKeyOfAWorker) {
    const auto workers = parse(R"({"workers":{"asked":{"pid":812,"replPid":813,"cwd":"\/home\/ada\/shop",
        "dispatch":{"seed":{"name":"fix the cart"}}}}})");
    ASSERT_TRUE(workers);
    EXPECT_THAT(*workers, ElementsAre(ClaudeWorker{.shortID = "asked",
                                                   .name = "fix the cart",
                                                   .cwd = "/home/ada/shop",
                                                   .hostPID = 812,
                                                   .replPID = 813,
                                                   .hasPrompt = true}));
}

TEST(ClaudeRoster, needsOnlyThePid) {
    const auto workers = parse(R"({"workers":{"quiet":{"pid":5}}})");
    ASSERT_TRUE(workers);
    EXPECT_THAT(*workers, ElementsAre(ClaudeWorker{.shortID = "quiet", .hostPID = 5}));
}

TEST(ClaudeRoster, takesAnEmptyNameForNone) {
    const auto workers = parse(R"({"workers":{"a":{"pid":5,"dispatch":{"seed":{"name":""}}}}})");
    ASSERT_TRUE(workers);
    EXPECT_EQ(workers->front().name, std::nullopt);
}

TEST(ClaudeRoster, ignoresWhatItDoesNotKnow) {
    const auto workers = parse(R"({"version":3,"workers":{"a":{"pid":5,"state":{"x":[1,null,{"y":"z"}]},
        "dispatch":{"at":12.5,"seed":{"kind":"k"}}}},"more":[[]]})");
    ASSERT_TRUE(workers);
    EXPECT_EQ(workers->size(), 1U);
}

TEST(ClaudeRoster, takesNullForAbsentOnlyWhereAKeyMayBeMissing) {
    EXPECT_TRUE(parse(R"({"workers":{"a":{"pid":5,"replPid":null,"cwd":null,"dispatch":null}}})"));
    EXPECT_FALSE(parse(R"({"workers":{"a":{"pid":null}}})"));
}

TEST(ClaudeRoster, saysWhichWorkerLacksItsPid) {
    const auto workers = parse(R"({"workers":{"a":{"pid":5},"b":{"cwd":"/"}}})");
    ASSERT_FALSE(workers);
    EXPECT_EQ(workers.failure().text(), "workers.b.pid: missing");
}

TEST(ClaudeRoster, refusesPidsThatAreNone) {
    EXPECT_FALSE(parse(R"({"workers":{"a":{"pid":2147483648}}})"));
    EXPECT_FALSE(parse(R"({"workers":{"a":{"pid":5.5}}})"));
    EXPECT_FALSE(parse(R"({"workers":{"a":{"pid":"5"}}})"));
    EXPECT_TRUE(parse(R"({"workers":{"a":{"pid":5.0}}})"));
}

TEST(ClaudeRoster, takesTheLastOfARepeatedWorker) {
    const auto workers = parse(R"({"workers":{"a":{"pid":5,"cwd":"/x"},"a":{"pid":6}}})");
    ASSERT_TRUE(workers);
    EXPECT_THAT(*workers, ElementsAre(ClaudeWorker{.shortID = "a", .hostPID = 6}));
}

TEST(ClaudeRoster, reportsDamagedBytes) {
    for (const char* text : {"", "{", "[]", "12", R"({"workers":[]})", R"({"workers":{}} x)", R"({"worker":{}})",
                             R"({"workers":{"a":{"pid":5,"x":tru}}})", "{\"workers\":{\"\xFF\":{\"pid\":5}}}"}) {
        EXPECT_FALSE(parse(text)) << text;
    }
    EXPECT_TRUE(parse(R"({"workers":{}})"));
}

TEST(ClaudeRoster, loadsNothingWithoutAFile) {
    const fakes::TemporaryFolder home;
    EXPECT_THAT(ClaudeRoster::load(home.path().string()), IsEmpty());
    EXPECT_THAT(ClaudeRoster::load(""), IsEmpty());
}

TEST(ClaudeRoster, oneWorkerWithoutPidLosesTheWholeFile) {
    const fakes::TemporaryFolder home;
    home.write(rosterFile, R"({"workers":{"a":{"pid":5},"b":{}}})");
    EXPECT_THAT(ClaudeRoster::load(home.path().string()), IsEmpty());
}

TEST(ClaudeRoster, aStateFileMeansAPromptHoweverEmptyItIs) {
    const fakes::TemporaryFolder home;
    home.write(rosterFile, R"({"workers":{"a":{"pid":5},"b":{"pid":6}}})");
    home.write(".claude/jobs/b/state.json", "");
    EXPECT_THAT(ClaudeRoster::load(home.path().string()),
                ElementsAre(ClaudeWorker{.shortID = "a", .hostPID = 5, .hasPrompt = false},
                            ClaudeWorker{.shortID = "b", .hostPID = 6, .hasPrompt = true}));
}

TEST(ClaudeRoster, aFolderInPlaceOfTheFileIsNoRoster) {
    const fakes::TemporaryFolder home;
    home.write(std::string(rosterFile) + "/inside", "");
    EXPECT_THAT(ClaudeRoster::load(home.path().string()), IsEmpty());
}

TEST(ClaudeRoster, aPipeInPlaceOfTheFileIsNotWaitedFor) {
    const fakes::TemporaryFolder home;
    home.write(".claude/daemon/other", "");
    ASSERT_EQ(::mkfifo((home / rosterFile).c_str(), 0600), 0);
    EXPECT_THAT(ClaudeRoster::load(home.path().string()), IsEmpty());
}

}  // namespace
}  // namespace tolvane
