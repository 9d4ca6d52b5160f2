#include "core/rules/SessionLabels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using ::testing::ElementsAre;

ClaudeWorker worker(std::string shortID, Pid host, std::optional<std::string> name = std::nullopt) {
    ClaudeWorker worker;
    worker.shortID = std::move(shortID);
    worker.name = std::move(name);
    worker.hostPID = host;
    worker.hasPrompt = true;
    return worker;
}

std::vector<ProcRow> family(const std::vector<std::pair<Pid, Pid>>& links) {
    std::vector<ProcRow> rows;
    for (const auto& [pid, ppid] : links) {
        auto& row = rows.emplace_back();
        row.sample.pid = pid;
        row.sample.ppid = ppid;
    }
    return rows;
}

std::vector<std::string> labels(const std::vector<ClaudeWorker>& workers, std::vector<ProcRow> rows) {
    SessionLabels::apply(workers, rows);
    std::vector<std::string> result;
    for (const auto& row : rows) result.push_back(row.claudeSession ? row.claudeSession->str() : "-");
    return result;
}

TEST(SessionLabels, nameOrShortIDTellsAPromptedSession) {
    EXPECT_EQ(SessionLabels::label(worker("ab12", 1, "Fix the build")), "Fix the build");
    EXPECT_EQ(SessionLabels::label(worker("ab12", 1)), "Claude ab12");
}

TEST(SessionLabels, sessionWithoutPromptSaysSoWhateverItsName) {
    auto waiting = worker("ab12", 1, "Fix the build");
    waiting.hasPrompt = false;
    EXPECT_EQ(SessionLabels::label(waiting), "Claude ab12, no prompt yet");
}

TEST(SessionLabels, hostAndAllItStartedBearTheLabel) {
    EXPECT_THAT(labels({worker("a", 10)}, family({{5, 1}, {10, 5}, {11, 10}, {12, 11}, {13, 5}})),
                ElementsAre("-", "Claude a", "Claude a", "Claude a", "-"));
}

TEST(SessionLabels, laterWorkerTakesWhatTwoClaim) {
    const auto rows = family({{10, 1}, {11, 10}, {12, 11}});
    EXPECT_THAT(labels({worker("a", 10), worker("b", 11)}, rows), ElementsAre("Claude a", "Claude b", "Claude b"));
    EXPECT_THAT(labels({worker("b", 11), worker("a", 10)}, rows), ElementsAre("Claude a", "Claude a", "Claude a"));
}

TEST(SessionLabels, interactiveProcessIsNotAskedFor) {
    auto both = worker("a", 10);
    both.replPID = 20;
    EXPECT_THAT(labels({both}, family({{10, 1}, {20, 1}})), ElementsAre("Claude a", "-"));
}

TEST(SessionLabels, hostThatHasGoneStillLabelsWhatItStarted) {
    EXPECT_THAT(labels({worker("a", 10)}, family({{11, 10}, {12, 1}})), ElementsAre("Claude a", "-"));
}

TEST(SessionLabels, withoutWorkersNobodyBearsALabel) {
    auto rows = family({{10, 1}});
    rows[0].claudeSession = Text("old");
    EXPECT_THAT(labels({}, rows), ElementsAre("-"));
    EXPECT_THAT(labels({worker("a", 77)}, rows), ElementsAre("-"));
}

TEST(SessionLabels, rowsInAnyOrderAndRepeatedOnesAreLabelled) {
    EXPECT_THAT(labels({worker("a", 10)}, family({{12, 11}, {11, 10}, {10, 1}, {11, 3}, {9, 1}})),
                ElementsAre("Claude a", "Claude a", "Claude a", "Claude a", "-"));
}

TEST(SessionLabels, aHostInARingOfParentsEnds) {
    EXPECT_THAT(labels({worker("a", 0), worker("b", 10)}, family({{0, 0}, {10, 11}, {11, 10}})),
                ElementsAre("Claude a", "Claude b", "Claude b"));
}

}  // namespace
}  // namespace tolvane
