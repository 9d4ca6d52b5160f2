#include "app/acts/Outcome.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

using Kind = Outcome::Kind;

struct Expected {
    Kind kind;
    std::string title;
    std::string logText;
    std::string body;
    bool freesAll = false;
};

TEST(Outcome, saysOfEveryKindWhatCameOfIt) {
    const std::vector<Expected> rows{
        {Kind::notified, "Mail is over its limit", "Notified", "Why."},
        {Kind::terminated, "Stopped Mail", "Terminated", "Why.", true},
        {Kind::stillRunning, "Could not stop Mail", "Still running", "Still running. Why."},
        {Kind::notRunning, "Mail was not running", "Not running", "Not running. Why."},
        {Kind::quit, "Quit Mail", "Quit", "Why.", true},
        {Kind::askedToQuit, "Asked Mail to quit", "Asked to quit", "Why."},
        {Kind::lowered, "Lowered the priority of Mail", "Lowered priority", "Why."},
        {Kind::notLowered, "Could not lower the priority of Mail", "Priority unchanged", "Priority unchanged. Why."},
    };
    for (const auto& row : rows) {
        const auto outcome = Outcome::of(row.kind, "Mail");
        EXPECT_EQ(outcome.kind, row.kind);
        EXPECT_EQ(outcome.title, row.title);
        EXPECT_EQ(outcome.logText, row.logText);
        EXPECT_EQ(outcome.body("Why."), row.body);
        EXPECT_EQ(outcome.freesAll, row.freesAll) << row.logText;
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
        EXPECT_EQ(outcome.logText, word);
        EXPECT_EQ(outcome.title, "Mail is over its limit");
        EXPECT_EQ(outcome.body("Why."), "Why.");
        EXPECT_FALSE(outcome.freesAll);
    }
}

TEST(Outcome, aRelaunchFreesNothingByItself) {
    const auto done = Outcome::of(Kind::relaunched, "Mail");
    EXPECT_EQ(done.kind, Kind::relaunched);
    EXPECT_EQ(done.title, "Restarted Mail");
    EXPECT_EQ(done.logText, "Relaunched");
    EXPECT_EQ(done.body("Why."), "Why.");
    EXPECT_FALSE(done.freesAll);
}

TEST(Outcome, aRelaunchThatFailedSaysWhy) {
    const std::vector<std::pair<Kind, std::string>> rows{
        {Kind::nothingToRelaunch, "Not running"},
        {Kind::stayedOpen, "Did not quit, it may have unsaved changes"},
        {Kind::notReopened, "Quit, relaunch failed: no such file"}};
    for (const auto& [kind, logText] : rows) {
        const auto failed = Outcome::of(kind, "Mail", {"no such file"});
        EXPECT_EQ(failed.kind, kind);
        EXPECT_EQ(failed.title, "Could not restart Mail");
        EXPECT_EQ(failed.logText, logText);
        EXPECT_EQ(failed.body("Why."), logText + ". Why.");
        EXPECT_FALSE(failed.freesAll);
    }
}

TEST(Outcome, aStartThatFailedInPartSaysWhatIsMissing) {
    const auto commands = Outcome::of(Kind::commandsNotStarted, "shop", {"npm and {}", "/logs/shop.log"});
    EXPECT_EQ(commands.title, "Could not start all of shop");
    EXPECT_EQ(commands.explanation(), "npm and {} did not start. Output goes to /logs/shop.log.");
    const auto containers = Outcome::of(Kind::containersNotStarted, "shop");
    EXPECT_EQ(containers.title, "Could not start all of shop");
    EXPECT_EQ(containers.explanation(), "Docker did not start its containers.");
}

TEST(Outcome, onlyWhatDidNotComeAboutHasFailed) {
    for (const auto kind :
         {Kind::stillRunning, Kind::notRunning, Kind::askedToQuit, Kind::nothingToRelaunch, Kind::stayedOpen,
          Kind::notReopened, Kind::notLowered, Kind::commandsNotStarted, Kind::containersNotStarted}) {
        EXPECT_TRUE(Outcome::of(kind, "Mail").failed) << Outcome::of(kind, "Mail").logText;
    }
    for (const auto kind : {Kind::onlyLogged, Kind::notified, Kind::terminated, Kind::quit, Kind::relaunched,
                            Kind::lowered, Kind::startedAgain, Kind::cancelled}) {
        EXPECT_FALSE(Outcome::of(kind, "Mail").failed) << Outcome::of(kind, "Mail").logText;
    }
    EXPECT_EQ(Outcome::of(Kind::cancelled, "Mail"), Outcome::cancelled());
}

TEST(Outcome, theNoticeSaysWhyUnlessTheTitleDoes) {
    EXPECT_EQ(Outcome::of(Kind::stillRunning, "Mail").sentence(), "Could not stop Mail. Still running.");
    EXPECT_EQ(Outcome::of(Kind::notRunning, "Mail").sentence(), "Mail was not running.");
    EXPECT_EQ(Outcome::of(Kind::askedToQuit, "Mail").sentence(), "Asked Mail to quit.");
}

}  // namespace
}  // namespace tolvane
