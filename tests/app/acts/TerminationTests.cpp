#include <gmock/gmock.h>

#include "tests/app/AnswerOf.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/ForwardingInspection.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::Optional;

/// A reader whose lifetime a test can observe.
class Counted : public fakes::ForwardingInspection {
public:
    Counted(std::unique_ptr<ProcessInspection> inner, std::shared_ptr<int> life)
        : ForwardingInspection(std::move(inner)), life_(std::move(life)) {}

private:
    std::shared_ptr<int> life_;
};

struct TerminationTest : ModelTest {
    /// True once all of them have ended.
    AnswerOf<bool> terminate(std::vector<Pid> pids) {
        return AnswerOf<bool>(areGone(model->acts().terminate({.title = "x", .pids = std::move(pids)})));
    }
    static QCoro::Task<bool> areGone(QCoro::Task<Outcome> act) {
        const auto outcome = co_await act;
        co_return outcome.kind == Outcome::Kind::terminated;
    }
    std::size_t asked(Pid pid) const { return world.timesAsked("signal 15 " + std::to_string(pid)); }
    std::size_t killed(Pid pid) const { return world.timesAsked("signal 9 " + std::to_string(pid)); }
    /// Ends the process and gives its pid to another one.
    void replace(Pid pid) {
        world.end(pid);
        world.add(pid, "newcomer").bsd->startTime = clock.now();
    }
};

TEST_F(TerminationTest, aProcessThatEndsAtOnceIsNotWaitedFor) {
    world.add(7, "node");
    start();
    const auto waiting = clock.waiting();
    const auto answer = terminate({7});
    EXPECT_THAT(answer.get(), Optional(true));
    EXPECT_EQ(clock.waiting(), waiting);
    EXPECT_EQ(killed(7), 0U);
}

TEST_F(TerminationTest, aProcessThatEndsAfterThreeSecondsIsWaitedForThatLong) {
    world.add(7, "node").endsAfter = 3s;
    start();
    const auto answer = terminate({7});
    clock.advance(2.9s);
    EXPECT_FALSE(answer.isThere());
    clock.advance(0.1s);
    EXPECT_THAT(answer.get(), Optional(true));
    EXPECT_EQ(asked(7), 1U);
    EXPECT_EQ(killed(7), 0U);
}

TEST_F(TerminationTest, aProcessThatIgnoresTheSignalIsKilledAfterTenSeconds) {
    world.add(7, "node").endsAfter = std::nullopt;
    start();
    const auto answer = terminate({7});
    clock.advance(9.9s);
    EXPECT_EQ(killed(7), 0U);
    clock.advance(0.1s);
    EXPECT_EQ(killed(7), 1U);
    EXPECT_FALSE(answer.isThere());
    clock.advance(0.3s);
    EXPECT_THAT(answer.get(), Optional(true));
}

TEST_F(TerminationTest, onlyWhatIsLeftIsKilled) {
    world.add(7, "node").endsAfter = 1s;
    world.add(8, "vite").endsAfter = std::nullopt;
    start();
    const auto answer = terminate({7, 8});
    clock.advance(10.3s);
    EXPECT_THAT(answer.get(), Optional(true));
    EXPECT_EQ(killed(7), 0U);
    EXPECT_EQ(killed(8), 1U);
}

TEST_F(TerminationTest, aProcessThatCannotBeSignalledStaysAlive) {
    world.add(7, "node");
    world.shielded = {7};
    start();
    const auto answer = terminate({7});
    clock.advance(10.2s);
    EXPECT_FALSE(answer.isThere());
    clock.advance(0.2s);
    EXPECT_THAT(answer.get(), Optional(false));
    EXPECT_EQ(killed(7), 1U);
}

TEST_F(TerminationTest, oneThatLivesOnIsEnoughForAFailure) {
    world.add(7, "node");
    world.add(8, "vite");
    world.shielded = {8};
    start();
    const auto answer = terminate({7, 8});
    clock.advance(10.3s);
    EXPECT_THAT(answer.get(), Optional(false));
}

TEST_F(TerminationTest, whatTheSnapshotDoesNotHoldIsDroppedAndCountsAsGone) {
    start();
    world.add(7, "node");
    EXPECT_THAT(terminate({7}).get(), Optional(true));
    EXPECT_EQ(asked(7), 0U);
}

TEST_F(TerminationTest, nothingToEndIsASuccess) {
    start();
    EXPECT_THAT(terminate({}).get(), Optional(true));
}

TEST_F(TerminationTest, forceQuitKillsAtOnceAndLooksASecondLater) {
    world.add(7, "node");
    world.add(8, "vite");
    world.shielded = {7};
    start();
    const auto before = world.timesAsked("bsdRecord 7");
    const AnswerOf<std::vector<Outcome>> answer(
        model->acts().forceQuit({{.title = "node", .pids = {7}}, {.title = "vite", .pids = {8}}}));
    EXPECT_EQ(killed(7), 1U);
    EXPECT_EQ(asked(7), 0U);
    EXPECT_EQ(world.timesAsked("bsdRecord 7"), before);
    clock.advance(0.9s);
    EXPECT_FALSE(answer.isThere());
    clock.advance(0.1s);
    EXPECT_THAT(answer.get(), Optional(testing::ElementsAre(Outcome::of(Outcome::Kind::stillRunning, "node"),
                                                            Outcome::of(Outcome::Kind::terminated, "vite"))));
}

TEST_F(TerminationTest, aModelThatGoesEndsTheLookAfterAForceQuit) {
    world.add(7, "node");
    world.shielded = {7};
    start();
    const AnswerOf<std::vector<Outcome>> answer(model->acts().forceQuit({{.title = "node", .pids = {7}}}));
    model.reset();
    EXPECT_THAT(answer.get(), Optional(testing::IsEmpty()));
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(TerminationTest, aPidThatIsReusedMeanwhileCountsAsGoneAndTheNewcomerIsNotSignalled) {
    world.add(7, "node").endsAfter = std::nullopt;
    start();
    const auto answer = terminate({7});
    clock.advance(2s);
    replace(7);
    clock.advance(0.5s);
    EXPECT_THAT(answer.get(), Optional(true));
    clock.advance(20s);
    EXPECT_EQ(asked(7), 1U);
    EXPECT_EQ(killed(7), 0U);
    EXPECT_TRUE(world.find(7));
}

TEST_F(TerminationTest, aPidThatWasReusedBeforeTheFirstSignalIsNotHit) {
    world.add(7, "node");
    start();
    replace(7);
    EXPECT_THAT(terminate({7}).get(), Optional(true));
    EXPECT_TRUE(world.find(7));
}

TEST_F(TerminationTest, aTickMeanwhileChangesNothing) {
    world.add(7, "node").endsAfter = std::nullopt;
    start();
    const auto answer = terminate({7});
    clock.advance(1s);
    world.find(7)->bsd->startTime = clock.now();
    world.press();
    EXPECT_EQ(row(7)->sample.startTime, clock.now());
    clock.advance(20s);
    EXPECT_THAT(answer.get(), Optional(true));
    EXPECT_EQ(killed(7), 0U);
}

TEST_F(TerminationTest, severalCanWaitAtOnce) {
    world.add(7, "node").endsAfter = 4s;
    world.add(8, "vite").endsAfter = 2s;
    start();
    const auto first = terminate({7});
    const auto second = terminate({8});
    clock.advance(2s);
    EXPECT_FALSE(first.isThere());
    EXPECT_THAT(second.get(), Optional(true));
    clock.advance(2s);
    EXPECT_THAT(first.get(), Optional(true));
}

TEST_F(TerminationTest, aWaitKeepsNoReaderOfTheKernel) {
    world.add(7, "node").endsAfter = std::nullopt;
    start();
    std::vector<std::weak_ptr<int>> readers;
    fake.host.makeInspection = [&readers, make = fake.host.makeInspection] {
        auto counted = std::make_shared<int>();
        readers.push_back(counted);
        return std::make_unique<Counted>(make(), std::move(counted));
    };
    const auto inUse = [&] { return std::ranges::count_if(readers, [](const auto& each) { return !each.expired(); }); };
    const auto answer = terminate({7});
    EXPECT_FALSE(readers.empty());
    for (int second = 0; second < 11; ++second) {
        EXPECT_EQ(inUse(), 0);
        clock.advance(1s);
    }
    EXPECT_THAT(answer.get(), Optional(true));
}

TEST_F(TerminationTest, aModelThatGoesEndsTheWait) {
    world.add(7, "node").endsAfter = std::nullopt;
    start();
    const auto polite = terminate({7});
    clock.advance(1s);
    model.reset();
    EXPECT_THAT(polite.get(), Optional(false));
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_EQ(killed(7), 0U);
}

TEST_F(TerminationTest, aModelThatGoesAfterTheKillEndsTheWaitToo) {
    world.add(7, "node");
    world.shielded = {7};
    start();
    const auto answer = terminate({7});
    clock.advance(10.1s);
    ASSERT_EQ(killed(7), 1U);
    model.reset();
    EXPECT_THAT(answer.get(), Optional(false));
    EXPECT_EQ(clock.waiting(), 0U);
}

struct RunningAppsTest : TerminationTest {
    void install(const std::string& name) {
        const auto path = "/Applications/" + name + ".app";
        world.appIDs[path] = "com.example." + name;
        world.instances.push_back({.identifier = "com.example." + name, .appPath = path});
    }
    std::vector<std::optional<std::string>> pathsOf(const std::vector<Pid>& pids) {
        std::vector<std::optional<std::string>> paths;
        for (const auto& app : model->acts().runningApps(pids)) paths.push_back(app->appPath());
        return paths;
    }
    static ActTarget target(std::vector<Pid> pids, std::optional<std::string> appPath = {}) {
        return {.title = "X", .pids = std::move(pids), .appPath = std::move(appPath)};
    }
};

TEST_F(RunningAppsTest, everyInstanceOfTheApplicationIsMeant) {
    install("mail");
    world.instances.push_back({.identifier = "com.example.mail", .appPath = "/other/mail.app"});
    addApp(7, "/Applications/mail.app");
    start();
    EXPECT_THAT(pathsOf({7}), testing::ElementsAre("/Applications/mail.app", "/other/mail.app"));
}

TEST_F(RunningAppsTest, anApplicationOfSeveralProcessesIsAskedForOnce) {
    install("mail");
    addApp(7, "/Applications/mail.app");
    addApp(8, "/Applications/mail.app");
    start();
    EXPECT_THAT(pathsOf({7, 8}), testing::ElementsAre("/Applications/mail.app"));
}

TEST_F(RunningAppsTest, severalApplicationsGoByTheirIdentifiers) {
    install("notes");
    install("mail");
    addApp(7, "/Applications/notes.app");
    addApp(8, "/Applications/mail.app");
    start();
    EXPECT_THAT(pathsOf({7, 8}), testing::ElementsAre("/Applications/mail.app", "/Applications/notes.app"));
}

TEST_F(RunningAppsTest, whatIsNoApplicationOrNotInTheSnapshotAddsNothing) {
    install("mail");
    world.add(7, "node");
    addApp(8, "/Applications/unknown.app");
    start();
    addApp(9, "/Applications/mail.app");
    EXPECT_THAT(pathsOf({7, 8, 9, 10}), testing::IsEmpty());
}

TEST_F(RunningAppsTest, forceQuitEndsApplicationsThroughTheirInstancesAndOthersByTheSignal) {
    install("mail");
    addApp(7, "/Applications/mail.app");
    world.add(8, "node");
    start();
    model->acts().forceQuit({target({7}, "/Applications/mail.app"), target({8})});
    EXPECT_EQ(world.instances[0].forced, 1);
    EXPECT_EQ(world.instances[0].asked, 0);
    EXPECT_EQ(killed(7), 0U);
    EXPECT_EQ(killed(8), 1U);
}

TEST_F(RunningAppsTest, aProcessUnderBothGoesWithItsApplication) {
    install("mail");
    addApp(7, "/Applications/mail.app");
    start();
    model->acts().forceQuit({target({7}), target({7}, "/Applications/mail.app")});
    EXPECT_EQ(world.instances[0].forced, 1);
    EXPECT_EQ(killed(7), 0U);
}

TEST_F(RunningAppsTest, aBundleWithoutAnIdentifierIsEndedByTheSignal) {
    addApp(7, "/Applications/mail.app");
    start();
    model->acts().forceQuit({target({7}, "/Applications/mail.app")});
    EXPECT_EQ(killed(7), 1U);
}

TEST_F(RunningAppsTest, forceQuitLeavesNoEntryInTheLog) {
    world.add(8, "node");
    start();
    model->acts().forceQuit({target({8})});
    clock.advance(20s);
    EXPECT_TRUE(model->activity->empty());
    EXPECT_TRUE(world.notifications.empty());
}

}  // namespace
}  // namespace tolvane
