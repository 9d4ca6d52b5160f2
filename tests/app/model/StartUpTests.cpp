#include <gmock/gmock.h>

#include <filesystem>

#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

struct StartUpTest : ModelTest {
    Store stored() const { return Store(folder / "Tolvane"); }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& each : std::filesystem::directory_iterator(folder / "Tolvane")) {
            names.push_back(each.path().filename().string());
        }
        std::ranges::sort(names);
        return names;
    }
    Rule rule(std::string name) const { return {.id = UUID::random(), .name = std::move(name)}; }
};

TEST_F(StartUpTest, keepsItsFilesInItsOwnFolderOfApplicationSupport) {
    start();
    EXPECT_EQ(model->store().directory, folder / "Tolvane");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "Tolvane"));
}

TEST_F(StartUpTest, aFirstStartOffersThePresetsAndNothingElse) {
    start();
    EXPECT_EQ(*model->rules, Rule::presets());
    EXPECT_TRUE(model->activity->empty());
    EXPECT_TRUE(model->parked->empty());
}

TEST_F(StartUpTest, takesUpWhatIsStored) {
    const std::vector<Rule> rules{rule("Mine")};
    const std::vector<ParkedProject> parked{{.root = "/home/ada/shop", .date = clock.now()}};
    const Moment moment{.date = clock.now() - 3600s, .total = 16 * GiB};
    stored().saveRules(rules);
    stored().saveParked(parked);
    stored().append(moment);
    for (const char* name : {"first", "second", "third"}) {
        stored().append(ActivityEntry{.id = UUID::random(), .date = clock.now(), .ruleName = name});
    }
    start();
    EXPECT_EQ(*model->rules, rules);
    EXPECT_EQ(*model->parked, parked);
    ASSERT_EQ(model->activity->size(), 3U);
    EXPECT_EQ(model->activity->front().ruleName, "third");
    EXPECT_EQ(model->moments->front(), moment);
    EXPECT_EQ(model->moments->size(), 2U);
}

TEST_F(StartUpTest, aStoredMomentOfHalfAMinuteAgoHoldsTheNextBack) {
    stored().append(Moment{.date = clock.now() - 30s});
    start();
    EXPECT_EQ(model->moments->size(), 1U);
    clock.advance(60s);
    EXPECT_EQ(model->moments->size(), 2U);
}

TEST_F(StartUpTest, storedMomentsJudgeSwapAtTheFirstTick) {
    stored().append(Moment{.date = clock.now() - 900s, .swapUsed = GiB});
    world.swapUsage = SwapUsage{.total = 8 * GiB, .used = 2 * GiB};
    start();
    EXPECT_EQ(*model->swapGrowth, std::int64_t{GiB});
    EXPECT_TRUE(*model->memoryTight);
}

TEST_F(StartUpTest, startingWritesNoRulesAndNothingParked) {
    start();
    EXPECT_THAT(files(), testing::ElementsAre("history.jsonl"));
}

TEST_F(StartUpTest, aDamagedRuleFileStaysUntilARuleIsChanged) {
    folder.write("Tolvane/rules.json", "[{\"name\"");
    start();
    EXPECT_EQ(*model->rules, Rule::presets());
    EXPECT_EQ(folder.read("Tolvane/rules.json"), "[{\"name\"");
    modelState->rules.set({rule("Mine")});
    EXPECT_EQ(folder.read("Tolvane/rules.json.damaged"), "[{\"name\"");
    EXPECT_EQ(stored().loadRules(), *model->rules);
}

TEST_F(StartUpTest, assigningRulesSavesThemAlsoWhenTheyAreEqual) {
    start();
    modelState->rules.set({rule("Mine")});
    EXPECT_EQ(stored().loadRules(), *model->rules);
    std::filesystem::remove(folder / "Tolvane/rules.json");
    modelState->rules.set(*model->rules);
    EXPECT_EQ(stored().loadRules(), *model->rules);
}

TEST_F(StartUpTest, assigningParkedProjectsSavesThem) {
    start();
    modelState->parked.set({{.root = "/home/ada/shop", .date = clock.now()}});
    EXPECT_EQ(stored().loadParked(), *model->parked);
}

TEST_F(StartUpTest, aFolderThatCannotBeMadeStopsNothing) {
    world.applicationSupport = "/dev/null/share";
    start();
    clock.advance(60s);
    modelState->rules.set({rule("Mine")});
    EXPECT_EQ(model->moments->size(), 2U);
}

}  // namespace
}  // namespace tolvane
