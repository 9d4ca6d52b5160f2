#include <gmock/gmock.h>

#include "app/acts/AppLaunch.h"
#include "tests/app/AnswerOf.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::Optional;

const std::string mail = "/Applications/Mail.app";

struct RelaunchTest : ModelTest {
    RelaunchTest() {
        world.appIDs[mail] = "com.example.mail";
        addApp(7, mail);
    }
    fakes::FakeInstance& addInstance() {
        return world.instances.emplace_back(
            fakes::FakeInstance{.identifier = "com.example.mail", .appPath = mail, .quitsAfter = 2s});
    }
    /// Relaunches Mail and returns the text for the log.
    AnswerOf<std::string> relaunch() {
        return AnswerOf<std::string>(logTextOf(model->acts().relaunch({.title = "Mail", .pids = {7}})));
    }
    static QCoro::Task<std::string> logTextOf(QCoro::Task<Outcome> act) {
        const auto outcome = co_await act;
        co_return outcome.logText;
    }
    std::size_t opened() const { return world.timesAsked("open " + mail); }
};

TEST_F(RelaunchTest, theApplicationQuitsAndIsStartedAgain) {
    addInstance();
    start();
    const auto answer = relaunch();
    clock.advance(1.9s);
    EXPECT_EQ(opened(), 0U);
    clock.advance(0.1s);
    EXPECT_THAT(answer.get(), Optional(std::string("Relaunched")));
    EXPECT_EQ(opened(), 1U);
    EXPECT_EQ(world.instances[0].asked, 1);
    EXPECT_EQ(world.instances[0].forced, 0);
}

TEST_F(RelaunchTest, everyInstanceIsAskedAndOneIsStarted) {
    addInstance();
    addInstance().quitsAfter = 4s;
    start();
    const auto answer = relaunch();
    clock.advance(3.9s);
    EXPECT_EQ(opened(), 0U);
    clock.advance(0.1s);
    EXPECT_THAT(answer.get(), Optional(std::string("Relaunched")));
    EXPECT_EQ(world.instances[1].asked, 1);
    EXPECT_EQ(opened(), 1U);
}

TEST_F(RelaunchTest, whatDoesNotRunIsNotStarted) {
    start();
    EXPECT_THAT(relaunch().get(), Optional(std::string("Not running")));
    EXPECT_EQ(opened(), 0U);
}

TEST_F(RelaunchTest, anInstanceOfUnknownOriginIsLeftAlone) {
    addInstance().appPath = std::nullopt;
    start();
    EXPECT_THAT(relaunch().get(), Optional(std::string("Not running")));
    EXPECT_EQ(world.instances[0].asked, 0);
}

TEST_F(RelaunchTest, anApplicationThatAsksItsUserIsLeftAloneAfterHalfAMinute) {
    addInstance().quitsAfter = std::nullopt;
    start();
    const auto answer = relaunch();
    clock.advance(29.9s);
    EXPECT_FALSE(answer.isThere());
    clock.advance(0.1s);
    EXPECT_THAT(answer.get(), Optional(std::string("Did not quit, it may have unsaved changes")));
    EXPECT_EQ(world.instances[0].asked, 1);
    EXPECT_EQ(world.instances[0].forced, 0);
    EXPECT_EQ(opened(), 0U);
    EXPECT_EQ(world.timesAsked("signal 15 7") + world.timesAsked("signal 9 7"), 0U);
}

TEST_F(RelaunchTest, theHostsWordsTellWhyItCouldNotBeStarted) {
    addInstance().quitsAfter = 0s;
    world.openError = "The file is damaged.";
    start();
    EXPECT_THAT(relaunch().get(), Optional(std::string("Quit, relaunch failed: The file is damaged.")));
}

TEST_F(RelaunchTest, aModelThatGoesEndsTheWaitAndStartsNothing) {
    addInstance();
    start();
    const auto answer = relaunch();
    model.reset();
    EXPECT_THAT(answer.get(), Optional(std::string()));
    clock.advance(60s);
    EXPECT_EQ(opened(), 0U);
}

/// A host that answers an open request only when the test does.
struct LateOpener : RunningApplications {
    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view) override { return {}; }
    void openInBackground(const std::string& appPath, Opened answer) override {
        path = appPath;
        opened = std::move(answer);
    }

    std::string path;
    Opened opened;
};

QCoro::Task<std::string> open(RunningApplications& running, std::stop_token cancellation) {
    const auto error = co_await AppLaunch(running, "/A.app", cancellation);
    if (cancellation.stop_requested()) co_return "cancelled";
    co_return error.value_or("started");
}

TEST(AppLaunch, waitsForTheHostsAnswer) {
    LateOpener host;
    const std::stop_source source;
    const AnswerOf<std::string> answer(open(host, source.get_token()));
    EXPECT_EQ(host.path, "/A.app");
    EXPECT_FALSE(answer.isThere());
    host.opened(std::nullopt);
    EXPECT_THAT(answer.get(), Optional(std::string("started")));
}

TEST(AppLaunch, givesTheHostsWords) {
    LateOpener host;
    const std::stop_source source;
    const AnswerOf<std::string> answer(open(host, source.get_token()));
    host.opened("no");
    EXPECT_THAT(answer.get(), Optional(std::string("no")));
}

TEST(AppLaunch, anAnswerAfterTheEndOfTheWaitIsNotHeard) {
    LateOpener host;
    std::stop_source source;
    const AnswerOf<std::string> answer(open(host, source.get_token()));
    source.request_stop();
    EXPECT_THAT(answer.get(), Optional(std::string("cancelled")));
    host.opened("late");
    EXPECT_THAT(answer.get(), Optional(std::string("cancelled")));
}

TEST(AppLaunch, aWaitThatWasOverBeforeItBeganAsksNothing) {
    LateOpener host;
    std::stop_source source;
    source.request_stop();
    const AnswerOf<std::string> answer(open(host, source.get_token()));
    EXPECT_THAT(answer.get(), Optional(std::string("cancelled")));
    EXPECT_EQ(host.path, "");
}

}  // namespace
}  // namespace tolvane
