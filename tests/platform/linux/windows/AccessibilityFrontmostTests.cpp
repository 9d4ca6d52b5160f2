#include "platform/linux/windows/AccessibilityFrontmost.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <optional>

#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/windows/FakeAccessibility.h"

namespace tolvane::linuxhost {

namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;
using testing::Launcher;
using ::testing::Optional;
using testing::PrivateBus;
using testing::Registry;
using testing::Speaker;
using ::testing::UnorderedElementsAre;

struct AccessibilityFrontmostTest : ::testing::Test {
    PrivateBus session;
    PrivateBus events;
    std::optional<Registry> registry{std::in_place, events};
    std::shared_ptr<SessionBus> bus = std::make_shared<SessionBus>(session.address());

    bool isListening() {
        return runUntil([this] { return registry->calls.size() >= 2; });
    }
    /// The first event may come too early for the subscription.
    static bool comesForward(const AccessibilityFrontmost& source, const Speaker& speaker) {
        return runUntil([&] {
            speaker.say("Activate");
            return source.canTell();
        });
    }
};

}  // namespace

TEST_F(AccessibilityFrontmostTest, theActivatedWindowsProcessIsInFront) {
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    EXPECT_FALSE(source.canTell()) << "who was there before is not told";
    ASSERT_TRUE(isListening());
    EXPECT_THAT(registry->argumentsOf("RegisterEvent"),
                UnorderedElementsAre("('window:activate', [], '')", "('window:deactivate', [], '')"));
    const Speaker editor(events, "org.example.Editor");
    EXPECT_TRUE(comesForward(source, editor));
    EXPECT_THAT(source.inFront(), Optional(FrontWindow{.pid = ::getpid()}));
}

TEST_F(AccessibilityFrontmostTest, afterItsTurnNobodyCanTellUntilTheNextOnes) {
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    ASSERT_TRUE(isListening());
    const Speaker editor(events, "org.example.Editor");
    const Speaker viewer(events, "org.example.Viewer");
    ASSERT_TRUE(comesForward(source, editor));
    editor.say("Deactivate");
    EXPECT_TRUE(runUntil([&] { return !source.canTell(); }));
    EXPECT_EQ(source.inFront(), std::nullopt);
    EXPECT_TRUE(comesForward(source, viewer));
}

TEST_F(AccessibilityFrontmostTest, aLateFarewellOfThePreviousOneEndsNothing) {
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    ASSERT_TRUE(isListening());
    const Speaker editor(events, "org.example.Editor");
    const Speaker viewer(events, "org.example.Viewer");
    ASSERT_TRUE(comesForward(source, editor));
    viewer.say("Activate");
    runFor(50ms);
    editor.say("Deactivate");
    runFor(100ms);
    EXPECT_TRUE(source.canTell());
    viewer.say("Deactivate");
    EXPECT_TRUE(runUntil([&] { return !source.canTell(); }));
}

TEST_F(AccessibilityFrontmostTest, oneThatEndsInItsTurnIsNotInFrontAnyMore) {
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    ASSERT_TRUE(isListening());
    {
        const Speaker editor(events, "org.example.Editor");
        ASSERT_TRUE(comesForward(source, editor));
    }
    EXPECT_TRUE(runUntil([&] { return !source.canTell(); }));
}

TEST_F(AccessibilityFrontmostTest, whereItIsSwitchedOffNobodyIsListenedToAndItStaysOff) {
    Launcher launcher(session, events.address(), false);
    const AccessibilityFrontmost source(bus);
    EXPECT_TRUE(runUntil([&] { return !launcher.service.argumentsOf("GetAll").empty(); }));
    runFor(100ms);
    EXPECT_THAT(launcher.service.argumentsOf("GetAddress"), IsEmpty());
    EXPECT_THAT(registry->calls, IsEmpty());
    EXPECT_FALSE(source.canTell());
    launcher.set(true);
    ASSERT_TRUE(isListening()) << "the user has switched it on";
    const Speaker editor(events, "org.example.Editor");
    EXPECT_TRUE(comesForward(source, editor));
    launcher.set(false);
    EXPECT_TRUE(runUntil([&] { return !source.canTell(); }));
}

TEST_F(AccessibilityFrontmostTest, aLauncherThatComesLaterIsFound) {
    const AccessibilityFrontmost source(bus);
    runFor(100ms);
    EXPECT_FALSE(source.canTell());
    const Launcher launcher(session, events.address(), true);
    EXPECT_TRUE(isListening());
}

TEST_F(AccessibilityFrontmostTest, aRegistryThatComesLaterIsAskedAllTheSame) {
    registry.reset();
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    EXPECT_TRUE(runUntil([&] { return !launcher.service.argumentsOf("GetAddress").empty(); }));
    runFor(100ms);
    registry.emplace(events);
    EXPECT_TRUE(isListening());
}

TEST_F(AccessibilityFrontmostTest, itsBusMayDieAndComeBack) {
    const Launcher launcher(session, events.address(), true);
    const AccessibilityFrontmost source(bus);
    ASSERT_TRUE(isListening());
    {
        const Speaker editor(events, "org.example.Editor");
        ASSERT_TRUE(comesForward(source, editor));
        events.die();
        EXPECT_TRUE(runUntil([&] { return !source.canTell(); }));
    }
    events.start();
    const Speaker editor(events, "org.example.Editor");
    EXPECT_TRUE(comesForward(source, editor));
}

TEST_F(AccessibilityFrontmostTest, anAddressWhereNobodyIsHarmsNothing) {
    const Launcher launcher(session, "unix:path=/nowhere/bus", true);
    const AccessibilityFrontmost source(bus);
    EXPECT_TRUE(runUntil([&] { return !launcher.service.argumentsOf("GetAddress").empty(); }));
    runFor(100ms);
    EXPECT_FALSE(source.canTell());
}

TEST_F(AccessibilityFrontmostTest, canEndWhileAnAnswerIsDue) {
    const Launcher launcher(session, events.address(), true);
    for (const auto span : {0ms, 1ms, 3ms, 10ms}) {
        const AccessibilityFrontmost source(bus);
        runFor(span);
    }
    runFor(50ms);
}

TEST(AccessibilityFrontmost, withoutABusItCannotTell) {
    const AccessibilityFrontmost source(std::make_shared<SessionBus>("unix:path=/nowhere/bus"));
    runFor(50ms);
    EXPECT_FALSE(source.canTell());
}

}  // namespace tolvane::linuxhost
