#include "app/preferences/LayeredPreferences.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {

namespace {

struct Layers {
    fakes::FakeHost fake;
    LayeredPreferences preferences;

    explicit Layers(LayeredPreferences::Overrides overrides)
        : preferences(std::move(fake.host.preferences), std::move(overrides)) {}
};

}  // namespace

TEST(LayeredPreferences, anOverrideStandsAboveTheStoredValue) {
    Layers layers({{"demo", true}});
    layers.fake.world->preferences["demo"] = false;
    EXPECT_EQ(layers.preferences.get<bool>("demo"), true);
}

TEST(LayeredPreferences, withoutAnOverrideTheStoredValueHolds) {
    Layers layers({{"demo", true}});
    layers.fake.world->preferences["openInterval"] = std::int64_t{10};
    EXPECT_EQ(layers.preferences.get<std::int64_t>("openInterval"), 10);
    EXPECT_EQ(layers.preferences.value("rulesPaused"), std::nullopt);
}

TEST(LayeredPreferences, anOverrideIsNotStored) {
    Layers layers({{"demo", true}});
    EXPECT_FALSE(layers.fake.world->preferences.contains("demo"));
}

TEST(LayeredPreferences, aWriteToAnOverriddenKeyIsStoredAndTheOverrideHolds) {
    Layers layers({{"openInterval", std::int64_t{2}}});
    layers.preferences.set("openInterval", std::int64_t{10});
    EXPECT_EQ(layers.preferences.get<std::int64_t>("openInterval"), 2);
    EXPECT_EQ(layers.fake.world->preferences.at("openInterval"), PreferenceValue(std::int64_t{10}));
}

TEST(LayeredPreferences, anOverrideOfAnotherTypeCountsAsAbsent) {
    Layers layers({{"openInterval", std::string("often")}});
    layers.fake.world->preferences["openInterval"] = std::int64_t{10};
    EXPECT_EQ(layers.preferences.get<std::int64_t>("openInterval"), std::nullopt);
}

}  // namespace tolvane
