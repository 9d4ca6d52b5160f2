#include "app/model/AppModel.h"

#include "app/preferences/AppPreferences.h"
#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

using AppModelTest = ModelTest;

TEST_F(AppModelTest, beginsWithAnEmptySnapshotOfNow) {
    fakes::HeldJobs jobs;
    start(jobs.factory());
    EXPECT_EQ(*model->snapshot, (Snapshot{.date = clock.now()}));
    EXPECT_EQ(model->snapshot->cpu.cores, 1);
    EXPECT_EQ(model->snapshot->memory.compressionRatio, 1.0);
    EXPECT_EQ(model->snapshot->memory.pressure, Pressure::normal);
}

TEST_F(AppModelTest, beginsAtTheProcessesWithNothingSelected) {
    fakes::HeldJobs jobs;
    start(jobs.factory());
    EXPECT_EQ(*model->section, AppSection::processes);
    EXPECT_EQ(*model->windowRequest, 0);
    EXPECT_EQ(*model->servicesChecked, distantPast);
    EXPECT_FALSE(*model->importing);
    EXPECT_FALSE(*model->exporting);
    EXPECT_FALSE(*model->importMessage);
    EXPECT_FALSE(*model->backupError);
    EXPECT_FALSE(*model->selectedRule);
    EXPECT_TRUE(model->selectedRows->empty());
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(AppModelTest, takesItsSwitchesFromThePreferences) {
    const PreferenceDates hidden{{"idle:node", clock.now() + 60s}};
    world.preferences["rulesPaused"] = true;
    world.preferences["backupToICloud"] = true;
    world.preferences["hiddenSuggestions"] = hidden;
    start();
    EXPECT_TRUE(*model->rulesPaused);
    EXPECT_TRUE(*model->backupToSyncFolder);
    EXPECT_EQ(*model->hiddenSuggestions, hidden);
}

TEST_F(AppModelTest, preferencesOfAnotherTypeCountAsAbsent) {
    world.preferences["rulesPaused"] = std::int64_t{1};
    world.preferences["backupToICloud"] = std::string("YES");
    world.preferences["hiddenSuggestions"] = std::string("all");
    start();
    EXPECT_FALSE(*model->rulesPaused);
    EXPECT_FALSE(*model->backupToSyncFolder);
    EXPECT_TRUE(model->hiddenSuggestions->empty());
}

TEST_F(AppModelTest, startingWritesNoPreference) {
    start();
    for (const auto& asked : world.asked) EXPECT_FALSE(asked.starts_with("set ")) << asked;
}

TEST_F(AppModelTest, assigningASwitchWritesItsPreferenceAlsoWhenItStandsLikeThat) {
    start();
    model->pauseRules(true);
    model->pauseRules(true);
    EXPECT_EQ(world.timesAsked("set rulesPaused"), 2U);
    EXPECT_EQ(world.preferences.at("rulesPaused"), PreferenceValue(true));
    model->setBackupToSyncFolder(true);
    EXPECT_EQ(world.preferences.at("backupToICloud"), PreferenceValue(true));
    const PreferenceDates hidden{{"idle:node", clock.now()}};
    modelState->hiddenSuggestions.set(hidden);
    EXPECT_EQ(world.preferences.at("hiddenSuggestions"), PreferenceValue(hidden));
}

TEST_F(AppModelTest, whoeverIsInFrontAtTheStartWasActivatedThen) {
    addApp(7, "/Applications/Mail.app");
    world.frontmost = FrontmostApplication{.appPath = "/Applications/Mail.app"};
    start();
    burn(7, 0, 60s);
    const Date begun = clock.now();
    clock.advance(60s);
    EXPECT_EQ(row(7)->unusedSince, begun);
}

TEST_F(AppModelTest, anActivationWithoutABundleIsDropped) {
    start();
    world.activate("");
    clock.advance(60s);
    EXPECT_EQ(ticks(), 2U);
}

TEST_F(AppModelTest, theWorldIsMadeOfTheModelAndOfWhoIsInFrontNow) {
    world.add(7, "node");
    world.pressureLevel = 4;
    start();
    EXPECT_EQ(model->world().frontmostAppID, std::nullopt);
    world.frontmost = FrontmostApplication{.appPath = "/Applications/Mail.app", .appID = "com.mail"};
    const World expected{.rows = model->snapshot->rows,
                         .frontmostAppID = "com.mail",
                         .claudeWorkers = {},
                         .selfPID = 4242,
                         .uid = 501,
                         .memoryTight = true};
    EXPECT_EQ(model->world(), expected);
    EXPECT_EQ(model->world().rows.size(), 1U);
}

TEST_F(AppModelTest, openingASectionAsksForTheWindowEachTime) {
    start();
    model->open(AppSection::history);
    EXPECT_EQ(*model->section, AppSection::history);
    EXPECT_EQ(*model->windowRequest, 1);
    model->open(AppSection::history);
    EXPECT_EQ(*model->windowRequest, 2);
}

TEST_F(AppModelTest, showingASectionDoesNotAskForTheWindow) {
    start();
    model->show(AppSection::history);
    EXPECT_EQ(*model->section, AppSection::history);
    EXPECT_EQ(*model->windowRequest, 0);
}

TEST_F(AppModelTest, clearingTheActivityClearsItsFileToo) {
    start();
    model->store().append(ActivityEntry{.date = clock.now(), .subject = "node"});
    modelState->activity.set(model->store().loadActivity(10));
    ASSERT_EQ(model->activity->size(), 1U);
    model->clearActivity();
    EXPECT_TRUE(model->activity->empty());
    EXPECT_TRUE(model->store().loadActivity(10).empty());
}

TEST_F(AppModelTest, aForgottenProjectIsGoneFromTheFileToo) {
    start();
    modelState->parked.set({{.root = "/home/ada/shop"}, {.root = "/home/ada/blog"}});
    model->forgetParked("/home/ada/shop");
    ASSERT_EQ(model->parked->size(), 1U);
    EXPECT_EQ(model->parked->front().root, "/home/ada/blog");
    EXPECT_EQ(model->store().loadParked(), *model->parked);
}

TEST_F(AppModelTest, historyOfNoProcessIsEmpty) {
    world.add(7, "node").usage->footprint = 100 * MiB;
    world.add(8, "vi").usage->footprint = 1 * MiB;
    start();
    EXPECT_TRUE(model->historyFor({}).empty());
    EXPECT_TRUE(model->historyFor({8}).empty());
    EXPECT_EQ(model->historyFor({7}).size(), 1U);
}

TEST_F(AppModelTest, historyOfTwoProcessesIsSummedByTick) {
    world.add(7, "node").usage->footprint = 100 * MiB;
    world.add(8, "vi").usage->footprint = 1 * MiB;
    start();
    clock.advance(60s);
    EXPECT_EQ(model->historyFor({7, 8}), model->historyFor({7}));
    world.find(8)->usage->footprint = 50 * MiB;
    clock.advance(60s);
    const auto points = model->historyFor({8, 7});
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[1].footprint, 100 * MiB);
    EXPECT_EQ(points[2].footprint, 150 * MiB);
    EXPECT_EQ(points[2].date, clock.now());
}

TEST(AppPreferences, haveTheirDefaultsWhileNothingIsStored) {
    const fakes::FakeHost fake;
    const auto& stored = *fake.host.preferences;
    EXPECT_FALSE(AppPreferences::demo.in(stored));
    EXPECT_FALSE(AppPreferences::rulesPaused.in(stored));
    EXPECT_FALSE(AppPreferences::backupToSyncFolder.in(stored));
    EXPECT_EQ(AppPreferences::openInterval.in(stored), 5);
    EXPECT_TRUE(AppPreferences::notifyOnAction.in(stored));
    EXPECT_TRUE(AppPreferences::notifyAboutSuggestions.in(stored));
    EXPECT_TRUE(AppPreferences::warnSwapGrowth.in(stored));
    EXPECT_EQ(AppPreferences::lastSwapWarning.in(stored), distantPast);
    EXPECT_EQ(AppPreferences::lastSuggestionNotice.in(stored), distantPast);
    EXPECT_TRUE(AppPreferences::showTrayIcon.in(stored));
}

TEST(AppPreferences, onlyAStoredFalseTurnsOff) {
    const fakes::FakeHost fake;
    fake.world->preferences["showInMenuBar"] = std::int64_t{0};
    EXPECT_TRUE(AppPreferences::showTrayIcon.in(*fake.host.preferences));
    AppPreferences::showTrayIcon.store(*fake.host.preferences, false);
    EXPECT_FALSE(AppPreferences::showTrayIcon.in(*fake.host.preferences));
}

}  // namespace
}  // namespace tolvane
