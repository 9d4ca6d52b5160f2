#include "app/demo/DemoHost.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {

namespace {

struct DemoHostTest : testing::Test {
    fakes::FakeHost fake;
    fakes::FakeWorld& world = *fake.world;
    Host host = Demo::inertHost(std::move(fake.host));
};

}  // namespace

TEST_F(DemoHostTest, neverReadsOrTouchesARealProcess) {
    world.add(71302, "someoneElses");
    world.instances.push_back({.identifier = "com.google.Chrome"});
    const Incarnation target{.pid = 71302, .startTime = world.find(71302)->bsd->startTime};
    EXPECT_FALSE(host.control->send(Signal::kill, target));
    EXPECT_TRUE(host.running->withAppID("com.google.Chrome").empty());
    EXPECT_TRUE(host.control->start({.executable = "/bin/true"}).has_value());
    EXPECT_EQ(host.children->run("/bin/true", {}), "");
    EXPECT_TRUE(host.makeInspection()->allPids().empty());
    EXPECT_TRUE(world.asked.empty());
    EXPECT_TRUE(world.started.empty());
    EXPECT_NE(world.find(71302), nullptr);
}

TEST_F(DemoHostTest, keepsItsFilesApart) {
    EXPECT_EQ(host.folders->applicationSupport(), world.applicationSupport + "/Tolvane-Demo");
    world.syncFolder = "/home/ada/Sync";
    EXPECT_FALSE(host.folders->syncFolder().has_value());
}

TEST_F(DemoHostTest, readsPreferencesAndStoresNone) {
    world.preferences.emplace("openInterval", std::int64_t{10});
    EXPECT_EQ(host.preferences->get<std::int64_t>("openInterval"), 10);
    host.preferences->set("openInterval", std::int64_t{2});
    EXPECT_EQ(host.preferences->get<std::int64_t>("openInterval"), 2);
    EXPECT_EQ(std::get<std::int64_t>(world.preferences.at("openInterval")), 10);
}

TEST_F(DemoHostTest, knowsTheApplicationsOfTheCast) {
    EXPECT_EQ(host.applications->appID("/Applications/Slack.app"), Text("com.tinyspeck.slackmacgap"));
    EXPECT_FALSE(host.applications->appID("/Applications/Other.app").has_value());
    EXPECT_EQ(host.frontmost->current()->appID, "com.apple.dt.Xcode");
}

}  // namespace tolvane
