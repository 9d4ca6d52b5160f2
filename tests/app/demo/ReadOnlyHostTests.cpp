#include "app/demo/ReadOnlyHost.h"

#include <filesystem>

#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {

namespace {

struct ReadOnlyHostTest : ModelTest {
    fakes::TemporaryFolder copies;
};

}  // namespace

TEST_F(ReadOnlyHostTest, showsWhatIsStoredAndStoresNothing) {
    const Store stored(folder / "Tolvane");
    auto rules = Rule::presets();
    rules.resize(1);
    stored.saveRules(rules);
    stored.append(Moment{.date = clock.now() - Seconds{60}});
    fake.host = readOnlyHost(std::move(fake.host), copies.path().string());
    start();
    EXPECT_EQ(*model->rules, rules);
    EXPECT_EQ(model->moments->size(), 2U);
    EXPECT_TRUE(*model->rulesPaused);
    modelState->rules.set({});
    model->pauseRules(false);
    EXPECT_EQ(stored.loadRules(), rules);
    EXPECT_EQ(stored.loadHistory(clock.now()).size(), 1U);
    EXPECT_TRUE(world.preferences.empty());
}

TEST_F(ReadOnlyHostTest, needsNothingToBeStored) {
    fake.host = readOnlyHost(std::move(fake.host), copies.path().string());
    start();
    EXPECT_EQ(*model->rules, Rule::presets());
}

}  // namespace tolvane
