#include "app/acts/Outcome.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

struct Expected {
    Deed deed;
    std::string title;
    std::string word;
    std::string body;
    bool freesAll = false;
};

TEST(Outcome, saysOfEveryDeedWhatCameOfIt) {
    const std::vector<Expected> rows{
        {Deed::notified, "Mail is over its limit", "Notified", "Why."},
        {Deed::terminated, "Stopped Mail", "Terminated", "Why.", true},
        {Deed::stillRunning, "Could not stop Mail", "Still running", "Still running. Why."},
        {Deed::notRunning, "Mail was not running", "Not running", "Not running. Why."},
        {Deed::quit, "Quit Mail", "Quit", "Why.", true},
        {Deed::askedToQuit, "Asked Mail to quit", "Asked to quit", "Why."},
        {Deed::lowered, "Lowered the priority of Mail", "Lowered priority", "Why."},
        {Deed::notLowered, "Could not lower the priority of Mail", "Priority unchanged", "Priority unchanged. Why."},
    };
    for (const auto& row : rows) {
        const auto outcome = Outcome::of(row.deed, "Mail");
        EXPECT_EQ(outcome.deed, row.deed);
        EXPECT_EQ(outcome.title, row.title);
        EXPECT_EQ(outcome.word, row.word);
        EXPECT_EQ(outcome.body("Why."), row.body);
        EXPECT_EQ(outcome.freesAll, row.freesAll) << row.word;
    }
}

TEST(Outcome, saysWhatARuleThatOnlyLogsWouldHaveDone) {
    const std::vector<std::pair<RuleAction, std::string>> rows{{RuleAction::notify, "Would notify"},
                                                               {RuleAction::terminate, "Would terminate"},
                                                               {RuleAction::quit, "Would quit"},
                                                               {RuleAction::relaunch, "Would relaunch"},
                                                               {RuleAction::lowerPriority, "Would lower priority"}};
    for (const auto& [action, word] : rows) {
        const auto outcome = Outcome::ofLogging(action, "Mail");
        EXPECT_EQ(outcome.word, word);
        EXPECT_EQ(outcome.title, "Mail is over its limit");
        EXPECT_EQ(outcome.body("Why."), "Why.");
        EXPECT_FALSE(outcome.freesAll);
    }
}

TEST(Outcome, aRelaunchIsNamedByItsAnswer) {
    const auto done = Outcome::ofRelaunch("Relaunched", "Mail");
    EXPECT_EQ(done.deed, Deed::relaunched);
    EXPECT_EQ(done.title, "Restarted Mail");
    EXPECT_EQ(done.word, "Relaunched");
    EXPECT_EQ(done.body("Why."), "Why.");
    EXPECT_FALSE(done.freesAll);
}

TEST(Outcome, aRelaunchThatFailedTellsWhy) {
    for (const std::string answer :
         {"Not running", "Did not quit, it may have unsaved changes", "Quit, relaunch failed: no such file"}) {
        const auto failed = Outcome::ofRelaunch(answer, "Mail");
        EXPECT_EQ(failed.deed, Deed::notRelaunched);
        EXPECT_EQ(failed.title, "Could not restart Mail");
        EXPECT_EQ(failed.word, answer);
        EXPECT_EQ(failed.body("Why."), answer + ". Why.");
        EXPECT_FALSE(failed.freesAll);
    }
}

}  // namespace
}  // namespace tolvane
