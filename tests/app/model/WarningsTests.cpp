#include <gmock/gmock.h>

#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

struct WarningsTest : ModelTest {
    void setSwap(std::uint64_t used) { world.swapUsage = SwapUsage{.total = 16 * GiB, .used = used}; }
    void setSwapIns(std::uint64_t bytes) {
        world.virtualMemory = VirtualMemoryCounters{.swapIns = bytes / world.pageSize};
    }
    void addHolder(Pid pid, std::string_view name, std::uint64_t compressed = 0) {
        auto& process = world.add(pid, name);
        process.usage->footprint = 2 * GiB;
        process.memory = MemoryRecord{.compressed = compressed};
    }
    void setCompressed(Pid pid, std::uint64_t bytes) { world.find(pid)->memory = MemoryRecord{.compressed = bytes}; }

    /// Runs for a quarter of an hour with this much in swap, as a baseline for later ticks.
    void runFor15Minutes(std::uint64_t swap = GiB) {
        setSwap(swap);
        setSwapIns(0);
        start();
        clock.advance(900s);
        ASSERT_THAT(world.notifications, IsEmpty());
    }
    const Notification& latest() const { return world.notifications.back(); }
    std::size_t count() const { return world.notifications.size(); }
};

TEST_F(WarningsTest, swapThatGrowsFastIsTold) {
    runFor15Minutes();
    setSwap(GiB + 600 * MiB);
    clock.advance(60s);
    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(latest().title, "Swap is growing fast");
    EXPECT_EQ(latest().body, "Up 600 MB in the last 15 minutes.");
    EXPECT_EQ(latest().section, "history");
}

TEST_F(WarningsTest, theGrowersAreNamed) {
    addHolder(7, "node");
    addHolder(8, "ruby");
    addHolder(9, "java");
    runFor15Minutes();
    setSwap(GiB + 600 * MiB);
    setCompressed(7, 300 * MiB);
    setCompressed(8, 1536 * MiB);
    setCompressed(9, 60 * MiB);
    clock.advance(60s);
    EXPECT_EQ(latest().body,
              "Up 600 MB in the last 15 minutes. Growing most: ruby (+1.5 GB), node (+300 MB), and java (+60 MB).");
}

TEST_F(WarningsTest, wordsFollowTheLocale) {
    fake.host.locale = "de_DE";
    addHolder(7, "node");
    addHolder(8, "ruby");
    runFor15Minutes();
    setSwap(GiB + 1536 * MiB);
    setCompressed(7, 300 * MiB);
    setCompressed(8, 1536 * MiB);
    clock.advance(60s);
    EXPECT_EQ(latest().body, "Up 1,5 GB in the last 15 minutes. Growing most: ruby (+1,5 GB) und node (+300 MB).");
}

TEST_F(WarningsTest, whatIsReadBackIsToldRather) {
    runFor15Minutes();
    setSwap(GiB + 600 * MiB);
    setSwapIns(700 * MiB);
    clock.advance(60s);
    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(latest().title, "Apps are waiting on swap");
    EXPECT_EQ(latest().body, "macOS read 700 MB back from swap in the last 15 minutes, and apps wait while it does.");
    EXPECT_EQ(latest().section, "history");
}

TEST_F(WarningsTest, whoReadBackIsNamed) {
    addHolder(7, "node");
    runFor15Minutes();
    setSwapIns(700 * MiB);
    world.find(7)->memory = MemoryRecord{.swapIns = 650 * MiB};
    clock.advance(60s);
    EXPECT_EQ(latest().body,
              "macOS read 700 MB back from swap in the last 15 minutes, and apps wait while it does."
              " Read back most: node (+650 MB).");
}

TEST_F(WarningsTest, slowGrowthIsNotTold) {
    runFor15Minutes();
    setSwap(GiB + 511 * MiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 0U);
}

TEST_F(WarningsTest, swapIsToldOfOnceAnHour) {
    runFor15Minutes();
    setSwap(2 * GiB);
    clock.advance(60s);
    ASSERT_EQ(count(), 1U);
    setSwap(4 * GiB);
    clock.advance(3540s);
    EXPECT_EQ(count(), 1U);
    setSwap(6 * GiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 2U);
}

TEST_F(WarningsTest, aWarningOfATimeThatHasNotComeHoldsNoneBack) {
    world.preferences["lastSwapWarning"] = clock.now() + Seconds{86'400.0 * 3650};
    runFor15Minutes();
    setSwap(2 * GiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(std::get<Date>(world.preferences.at("lastSwapWarning")), clock.now());
}

TEST_F(WarningsTest, theHourOutlivesTheProgram) {
    runFor15Minutes();
    setSwap(2 * GiB);
    clock.advance(60s);
    ASSERT_EQ(count(), 1U);
    const Date told = clock.now();
    EXPECT_EQ(std::get<Date>(world.preferences.at("lastSwapWarning")), told);
    model.reset();
    setSwap(4 * GiB);
    start();
    clock.advance(60s);
    EXPECT_EQ(count(), 1U);
    clock.advance(3480s);
    setSwap(6 * GiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 2U);
}

TEST_F(WarningsTest, onlyAStoredFalseStopsTheSwapWarning) {
    world.preferences["warnSwapGrowth"] = false;
    runFor15Minutes();
    setSwap(2 * GiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(world.preferences.contains("lastSwapWarning"));
    world.preferences["warnSwapGrowth"] = std::string("no");
    clock.advance(60s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(WarningsTest, aDateOfAnotherTypeIsNoDate) {
    world.preferences["lastSwapWarning"] = std::string("today");
    runFor15Minutes();
    setSwap(2 * GiB);
    clock.advance(60s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(WarningsTest, eachNotificationHasAnIdentifierOfItsOwn) {
    start();
    model->notify("a", "b", AppSection::rules);
    model->notify("a", "b", std::nullopt);
    ASSERT_EQ(count(), 2U);
    EXPECT_NE(world.notifications[0].identifier, world.notifications[1].identifier);
    EXPECT_TRUE(UUID::parse(latest().identifier));
    EXPECT_EQ(latest().identifier, UUID::parse(latest().identifier)->text());
    EXPECT_EQ(world.notifications[0].section, "rules");
    EXPECT_EQ(latest().section, std::nullopt);
}

TEST_F(WarningsTest, permissionIsNotAskedForAtTheStart) {
    start();
    clock.advance(600s);
    EXPECT_EQ(world.permissionRequests, 0);
    model->requestNotificationPermission();
    EXPECT_EQ(world.permissionRequests, 1);
}

/// Notices about idle holders and about lasting pressure.
struct NoticeTest : WarningsTest {
    /// Runs for two hours with unused programs of these sizes.
    void idle(const std::vector<std::uint64_t>& megabytes) {
        world.memorySize = 16 * GiB;
        Pid pid = 70;
        for (const auto each : megabytes) {
            world.add(pid, "server" + std::to_string(pid)).usage->footprint = each * MiB;
            ++pid;
        }
        start();
        clock.advance(7200s);
        ASSERT_EQ(model->suggestions->size(), megabytes.size());
    }
    void pressFor(Seconds span) {
        world.pressureLevel = 2;
        clock.advance(span);
    }
};

TEST_F(NoticeTest, pressureThatLastsPointsToTheSuggestions) {
    idle({600, 700});
    pressFor(360s);
    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(latest().title, "Memory is tight");
    EXPECT_EQ(latest().body, "2 suggestions could free 1.27 GB, starting with server71.");
    EXPECT_EQ(latest().section, "suggestions");
}

TEST_F(NoticeTest, oneSuggestionIsOne) {
    idle({1024});
    pressFor(360s);
    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(latest().body, "1 suggestion could free 1 GB, starting with server70.");
}

TEST_F(NoticeTest, lessThanAGiBIsNotWorthOne) {
    idle({900});
    pressFor(3600s);
    EXPECT_EQ(count(), 0U);
}

TEST_F(NoticeTest, withoutPressureThereIsNone) {
    idle({2000});
    clock.advance(3600s);
    EXPECT_EQ(count(), 0U);
}

TEST_F(NoticeTest, pressureMustLastForFiveMinutes) {
    idle({2000});
    pressFor(300s);
    EXPECT_EQ(count(), 0U);
    pressFor(60s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, aTickWithoutPressureRestartsTheFiveMinutes) {
    idle({2000});
    pressFor(300s);
    world.pressureLevel = 1;
    clock.advance(60s);
    pressFor(300s);
    EXPECT_EQ(count(), 0U);
    pressFor(60s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, pressureThatGetsWorseIsOneSpell) {
    idle({2000});
    pressFor(180s);
    world.pressureLevel = 4;
    clock.advance(180s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, hiddenSuggestionsDoNotCount) {
    idle({600, 600});
    model->hide(model->suggestions->front(), distantFuture);
    pressFor(3600s);
    EXPECT_EQ(count(), 0U);
}

TEST_F(NoticeTest, oneADayGoesOut) {
    idle({2000});
    pressFor(360s);
    ASSERT_EQ(count(), 1U);
    world.pressureLevel = 1;
    clock.advance(60s);
    pressFor(86'280s);
    EXPECT_EQ(count(), 1U);
    clock.advance(60s);
    EXPECT_EQ(count(), 2U);
}

TEST_F(NoticeTest, aNoticeOfATimeThatHasNotComeHoldsNoneBack) {
    world.preferences["lastSuggestionNotice"] = clock.now() + Seconds{86'400.0 * 3650};
    idle({2000});
    pressFor(360s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, theDayOutlivesTheProgramAndTheSpellDoesNot) {
    idle({2000});
    pressFor(360s);
    ASSERT_EQ(count(), 1U);
    model.reset();
    start();
    clock.advance(7200s);
    ASSERT_FALSE(model->suggestions->empty());
    EXPECT_EQ(count(), 1U);
    world.preferences.erase("lastSuggestionNotice");
    model.reset();
    world.preferences["hiddenSuggestions"] = PreferenceDates{};
    start();
    clock.advance(7200s);
    EXPECT_EQ(count(), 2U);
}

TEST_F(NoticeTest, turnedOffThereAreNoneButTheSpellGoesOn) {
    world.preferences["notifyAboutSuggestions"] = false;
    idle({2000});
    pressFor(3600s);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(world.preferences.contains("lastSuggestionNotice"));
    world.preferences.erase("notifyAboutSuggestions");
    clock.advance(60s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, choicesOfAnotherTypeAreNone) {
    world.preferences["notifyAboutSuggestions"] = std::int64_t{0};
    world.preferences["lastSuggestionNotice"] = std::string("today");
    idle({2000});
    pressFor(360s);
    EXPECT_EQ(count(), 1U);
}

TEST_F(NoticeTest, pausedRulesStopNoNotice) {
    world.preferences["rulesPaused"] = true;
    idle({2000});
    pressFor(360s);
    EXPECT_EQ(count(), 1U);
}

}  // namespace
}  // namespace tolvane
