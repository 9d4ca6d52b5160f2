#include "app/acts/Acts.h"

#include <gmock/gmock.h>

#include "tests/app/AnswerOf.h"
#include "tests/fakes/Executors.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::Optional;
using Kind = Outcome::Kind;

const std::string mail = "/Applications/Mail.app";

struct PlainState : ActState {
    const std::vector<ProcRow>& rows() const override { return rows_; }
    const std::map<Pid, Lowered>& loans() const override { return loans_; }
    void setLoans(std::map<Pid, Lowered> loans) override { loans_ = std::move(loans); }
    const std::vector<Container>& containers() const override { return containers_; }
    void setContainers(std::vector<Container> containers) override { containers_ = std::move(containers); }
    const std::vector<ParkedProject>& parked() const override { return parked_; }
    void setParked(std::vector<ParkedProject> parked) override { parked_ = std::move(parked); }
    void resample() override { ++resampled; }

    int resampled = 0;
    std::vector<ProcRow> rows_;
    std::map<Pid, Lowered> loans_;
    std::vector<Container> containers_;
    std::vector<ParkedProject> parked_;
};

/// Acts without a model, on one process of Mail.
struct ActsTest : testing::Test {
    fakes::FakeHost fake;
    fakes::VirtualClock& clock = *fake.clock;
    fakes::FakeWorld& world = *fake.world;
    PlainState state;
    BackgroundJobs background{fakes::InlineExecutor::make};
    CancelSource tasks;
    Acts acts{fake.host, state, background, tasks};

    ActsTest() {
        auto row = fakes::row(7, "Mail");
        row.appID = Text("com.example.mail");
        row.sample.startTime = world.add(7, "Mail").bsd->startTime;
        state.rows_ = {std::move(row)};
        world.instances.push_back({.identifier = "com.example.mail", .appPath = mail, .quitsAfter = 1s});
    }
    AnswerOf<Outcome> perform(RuleAction action) {
        return AnswerOf<Outcome>(acts.perform(action, {.title = "Mail", .pids = {7, 8}}));
    }
    static auto outcome(Kind kind) { return Optional(Outcome::of(kind, "Mail")); }
};

TEST_F(ActsTest, notifyingTouchesNothing) {
    EXPECT_THAT(perform(RuleAction::notify).get(), outcome(Kind::notified));
    EXPECT_TRUE(world.asked.empty());
}

TEST_F(ActsTest, terminatingEndsTheProcess) {
    EXPECT_THAT(perform(RuleAction::terminate).get(), outcome(Kind::terminated));
    EXPECT_FALSE(world.find(7));
}

TEST_F(ActsTest, quittingAsksTheApplication) {
    const auto answer = perform(RuleAction::quit);
    EXPECT_FALSE(answer.isThere());
    clock.advance(1s);
    EXPECT_THAT(answer.get(), outcome(Kind::quit));
    EXPECT_EQ(world.timesAsked("open " + mail), 0U);
}

TEST_F(ActsTest, relaunchingNamesTheApplicationThatHoldsMemoryAnew) {
    const auto answer = perform(RuleAction::relaunch);
    clock.advance(1s);
    ASSERT_TRUE(answer.isThere());
    EXPECT_EQ(answer.get()->kind, Kind::relaunched);
    EXPECT_THAT(answer.get()->relaunchedApp, Optional(mail));
    EXPECT_EQ(world.timesAsked("open " + mail), 1U);
}

TEST_F(ActsTest, loweringLeavesALoan) {
    EXPECT_THAT(perform(RuleAction::lowerPriority).get(), outcome(Kind::lowered));
    EXPECT_TRUE(state.loans().contains(7));
    acts.restoreAllPriorities();
    EXPECT_TRUE(state.loans().empty());
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
}

TEST_F(ActsTest, whatTheSampleDoesNotHoldIsPassedOver) {
    state.rows_.clear();
    EXPECT_THAT(perform(RuleAction::terminate).get(), outcome(Kind::terminated));
    EXPECT_THAT(perform(RuleAction::quit).get(), outcome(Kind::notRunning));
    EXPECT_THAT(perform(RuleAction::relaunch).get(), outcome(Kind::nothingToRelaunch));
    EXPECT_THAT(perform(RuleAction::lowerPriority).get(), outcome(Kind::notLowered));
    EXPECT_TRUE(world.find(7));
    EXPECT_EQ(world.instances[0].asked, 0);
}

TEST_F(ActsTest, cancellingEndsEveryWaitAtOnce) {
    world.find(7)->endsAfter = std::nullopt;
    for (const auto action : {RuleAction::terminate, RuleAction::quit, RuleAction::relaunch}) {
        world.instances[0] = {.identifier = "com.example.mail", .appPath = mail, .quitsAfter = std::nullopt};
        const auto answer = perform(action);
        EXPECT_FALSE(answer.isThere());
        tasks.renew();
        EXPECT_THAT(answer.get(), Optional(Outcome::cancelled()));
    }
    clock.advance(60s);
    EXPECT_EQ(world.timesAsked("signal 9 7"), 0U);
    EXPECT_EQ(world.timesAsked("open " + mail), 0U);
}

TEST_F(ActsTest, stoppingAProjectShowsTheResultAtOnce) {
    const ProjectGroup shop{.root = "/srv/shop", .rows = state.rows_};
    const AnswerOf<Outcome> answer(acts.stop(shop));
    EXPECT_THAT(answer.get(), Optional(Outcome::of(Kind::terminated, "shop")));
    EXPECT_EQ(state.resampled, 1);
}

}  // namespace
}  // namespace tolvane
