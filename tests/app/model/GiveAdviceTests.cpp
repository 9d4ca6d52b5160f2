#include <gmock/gmock.h>
#include <QCoroTask>
#include <optional>
#include <vector>

#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

struct AdviceModelTest : ModelTest {
    static Suggestion suggestion(std::string id, std::vector<Pid> pids = {}) {
        return {.id = std::move(id), .pids = std::move(pids)};
    }
    std::vector<std::string> visible() const {
        std::vector<std::string> ids;
        for (const auto& each : model->visibleSuggestions()) ids.push_back(each.id);
        return ids;
    }
    void addNotes() {
        addApp(7, "/Applications/Notes.app");
        world.appIDs["/Applications/Notes.app"] = "com.example.Notes";
        world.instances.push_back({.identifier = "com.example.Notes", .appPath = "/Applications/Notes.app"});
    }
    void startWith(std::vector<Suggestion> suggestions) {
        start();
        modelState->suggestions.set(std::move(suggestions));
    }
    Snapshot snapshotAt(Date date) const {
        auto snapshot = *model->snapshot;
        snapshot.date = date;
        return snapshot;
    }
};

TEST_F(AdviceModelTest, everyTickLooksForSuggestions) {
    world.memorySize = 16 * GiB;
    world.add(70, "server").usage->footprint = GiB;
    start();
    EXPECT_THAT(*model->suggestions, IsEmpty());
    clock.advance(7200s);
    ASSERT_EQ(model->suggestions->size(), 1U);
    EXPECT_EQ(model->suggestions->front().id, "idle||server");
    EXPECT_EQ(model->suggestions->front().evidence, "Unused for 2 hr, using 1 GB.");
    world.end(70);
    clock.advance(60s);
    EXPECT_THAT(*model->suggestions, IsEmpty());
}

TEST_F(AdviceModelTest, theServiceManagersProcessesAreNotLeftRunning) {
    const fakes::TemporaryFolder home;
    home.write("src/shop/.git/HEAD", "ref: refs/heads/main\n");
    world.home = home.path().string();
    auto& server = world.add(71, "vite");
    server.cwd = Text(home / "src/shop");
    server.ports = {5173};
    start();
    clock.advance(3600s);
    ASSERT_EQ(model->suggestions->size(), 1U);
    EXPECT_EQ(model->suggestions->front().evidence, "Its terminal is gone. Listening on port 5173, unused for 1 hr.");
    modelState->servicePIDs.set({71});
    world.managedPIDs = std::set<Pid>{71};
    clock.advance(60s);
    EXPECT_THAT(*model->suggestions, IsEmpty());
}

TEST_F(AdviceModelTest, portsAreNotAskedForWhileNothingElseSpeaksForAFinding) {
    world.add(71, "vite").ports = {5173};
    start();
    clock.advance(7200s);
    EXPECT_EQ(world.timesAsked("listeningPorts 71"), 0U);
}

TEST_F(AdviceModelTest, aDeviceIsCalledByItsName) {
    const std::string device = "6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E";
    world.propertyLists["/home/ada/Library/Developer/CoreSimulator/Devices/" + device + "/device.plist name"] =
        "iPhone 16";
    world.add(72, "launchd_sim").arguments = {"launchd_sim", "/CoreSimulator/Devices/" + device + "/data"};
    start();
    clock.advance(3600s);
    ASSERT_EQ(model->suggestions->size(), 1U);
    EXPECT_EQ(model->suggestions->front().title, "iPhone 16");
}

TEST_F(AdviceModelTest, aSnoozeEndsWithTheFirstSampleAfterItsDate) {
    startWith({suggestion("a"), suggestion("b")});
    const Date noon = clock.now() + 3600s;
    model->hide(suggestion("a"), noon);
    EXPECT_THAT(visible(), ElementsAre("b"));
    modelState->snapshot.set(snapshotAt(noon));
    EXPECT_THAT(visible(), ElementsAre("b"));
    modelState->snapshot.set(snapshotAt(noon + 1s));
    EXPECT_THAT(visible(), ElementsAre("a", "b"));
}

TEST_F(AdviceModelTest, theSampleTellsTheTimeNotTheClock) {
    startWith({suggestion("a")});
    model->hide(suggestion("a"), clock.now() + 3600s);
    clock.jumpTo(clock.now() + 7200s);
    EXPECT_THAT(visible(), IsEmpty());
}

TEST_F(AdviceModelTest, suggestionsOfOtherProjectsShareNoSnooze) {
    startWith({suggestion("left|/home/ada/src/shop|vite"), suggestion("left|/home/ada/src/blog|vite")});
    model->hide(suggestion("left|/home/ada/src/shop|vite"), distantFuture);
    EXPECT_THAT(visible(), ElementsAre("left|/home/ada/src/blog|vite"));
}

TEST_F(AdviceModelTest, ignoringOneKindOfAdviceLeavesTheOthers) {
    startWith({suggestion("idle|app|com.example.Notes"), suggestion("busy|com.example.Notes"),
               suggestion("growing|com.example.Notes")});
    model->hide(suggestion("idle|app|com.example.Notes"), distantFuture);
    EXPECT_THAT(visible(), ElementsAre("busy|com.example.Notes", "growing|com.example.Notes"));
}

TEST_F(AdviceModelTest, whatIsHiddenIsStoredAndOutlivesTheProgram) {
    startWith({suggestion("a")});
    const Date until = clock.now() + 86'400s;
    model->hide(suggestion("a"), until);
    EXPECT_EQ(std::get<PreferenceDates>(world.preferences.at("hiddenSuggestions")), (PreferenceDates{{"a", until}}));
    model.reset();
    startWith({suggestion("a"), suggestion("b")});
    EXPECT_THAT(visible(), ElementsAre("b"));
}

TEST_F(AdviceModelTest, hidingSweepsOutWhatIsOver) {
    const Date now = clock.now();
    world.preferences["hiddenSuggestions"] =
        PreferenceDates{{"over", now - 1s}, {"now", now}, {"later", now + 1s}, {"a", distantFuture}};
    start();
    EXPECT_EQ(model->hiddenSuggestions->size(), 4U);
    model->hide(suggestion("a"), now + 60s);
    EXPECT_EQ(*model->hiddenSuggestions, (PreferenceDates{{"a", now + 60s}, {"later", now + 1s}}));
}

TEST_F(AdviceModelTest, aSuggestionThatIsActedOnGoesAtOnce) {
    world.add(7, "node").endsAfter = 5s;
    startWith({suggestion("a", {7}), suggestion("b"), suggestion("a")});
    model->act(model->suggestions->front());
    EXPECT_THAT(visible(), ElementsAre("b"));
    EXPECT_THAT(world.find(7), Not(nullptr));
    EXPECT_EQ(world.timesAsked("signal 15 7"), 1U);
    clock.advance(10s);
    EXPECT_EQ(world.find(7), nullptr);
}

TEST_F(AdviceModelTest, quittingAsksTheApplicationsPolitely) {
    addNotes();
    startWith({suggestion("a", {7})});
    model->act(model->suggestions->front(), RuleAction::quit);
    EXPECT_EQ(world.instances.front().asked, 1);
    EXPECT_EQ(world.instances.front().forced, 0);
    EXPECT_EQ(world.timesAsked("signal 15 7"), 0U);
}

TEST_F(AdviceModelTest, restartingAsksTheApplicationToQuitFirst) {
    addNotes();
    auto restart = suggestion("a", {7});
    restart.action = RuleAction::relaunch;
    startWith({restart});
    model->act(model->suggestions->front());
    EXPECT_EQ(world.instances.front().asked, 1);
    EXPECT_THAT(visible(), IsEmpty());
}

TEST_F(AdviceModelTest, notifyingDoesNothing) {
    world.add(7, "node");
    startWith({suggestion("a", {7})});
    const auto asked = world.asked.size();
    model->act(model->suggestions->front(), RuleAction::notify);
    EXPECT_EQ(world.asked.size(), asked);
    EXPECT_THAT(visible(), IsEmpty());
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(AdviceModelTest, aGivenActionTakesThePlaceOfTheSuggestionsOwn) {
    world.add(7, "node");
    startWith({suggestion("a", {7})});
    model->act(model->suggestions->front(), RuleAction::lowerPriority);
    EXPECT_EQ(world.timesAsked("lower 7"), 1U);
    EXPECT_TRUE(model->lowered->contains(7));
    EXPECT_EQ(world.timesAsked("signal 15 7"), 0U);
}

/// Collects the outcomes of acts on suggestions, in the order in which the acts ended.
struct SuggestionActTest : AdviceModelTest {
    std::vector<std::optional<Outcome>> ended;

    static QCoro::Task<> keep(QCoro::Task<std::optional<Outcome>> act, std::vector<std::optional<Outcome>>* ended) {
        ended->push_back(co_await act);
    }
    void act(RuleAction action) { keep(model->act(suggestionOfSeven(), action), &ended); }
    static Suggestion suggestionOfSeven() {
        auto made = suggestion("a", {7});
        made.title = "Notes";
        return made;
    }
};

TEST_F(SuggestionActTest, whatComesOffGivesNothingBack) {
    addNotes();
    world.find(7)->endsAfter = 1s;
    start();
    act(RuleAction::lowerPriority);
    act(RuleAction::quit);
    act(RuleAction::terminate);
    clock.advance(60s);
    EXPECT_THAT(ended, ElementsAre(std::nullopt, std::nullopt, std::nullopt));
}

TEST_F(SuggestionActTest, aProcessThatStaysIsGivenBack) {
    world.add(7, "node");
    world.shielded = {7};
    start();
    act(RuleAction::terminate);
    clock.advance(9s);
    EXPECT_THAT(ended, IsEmpty());
    clock.advance(2s);
    EXPECT_THAT(ended, ElementsAre(Outcome::of(Outcome::Kind::stillRunning, "Notes")));
}

TEST_F(SuggestionActTest, anApplicationThatStaysIsGivenBack) {
    addNotes();
    world.instances.front().quitsAfter = std::nullopt;
    start();
    act(RuleAction::quit);
    act(RuleAction::relaunch);
    clock.advance(31s);
    EXPECT_THAT(ended, ElementsAre(Outcome::of(Outcome::Kind::askedToQuit, "Notes"),
                                   Outcome::of(Outcome::Kind::stayedOpen, "Notes")));
}

TEST_F(SuggestionActTest, anApplicationThatIsGoneIsGivenBack) {
    world.add(7, "node");
    start();
    act(RuleAction::quit);
    EXPECT_THAT(ended, ElementsAre(Outcome::of(Outcome::Kind::notRunning, "Notes")));
}

TEST_F(SuggestionActTest, aPriorityThatStaysIsGivenBack) {
    start();
    act(RuleAction::lowerPriority);
    EXPECT_THAT(ended, ElementsAre(Outcome::of(Outcome::Kind::notLowered, "Notes")));
}

TEST_F(AdviceModelTest, actingWritesNoEntryOfItsOwn) {
    world.add(7, "node");
    startWith({suggestion("a", {7})});
    model->act(model->suggestions->front(), RuleAction::lowerPriority);
    EXPECT_THAT(*model->activity, IsEmpty());
}

}  // namespace
}  // namespace tolvane
