#include "platform/linux/windows/KWinFrontmost.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/platform_linux/EventLoop.h"
#include "tests/platform_linux/FakeKWin.h"

namespace tolvane::linuxhost {

namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using testing::FakeKWin;
using ::testing::HasSubstr;
using ::testing::Optional;
using testing::PrivateBus;

struct KWinFrontmostTest : ::testing::Test {
    PrivateBus daemon;
    TemporaryFolder folder;
    std::shared_ptr<SessionBus> bus = std::make_shared<SessionBus>(daemon.address());
    int changes = 0;
    Subscription kept;

    std::unique_ptr<KWinFrontmost> begin(KWinFrontmost::Patience patience = {
                                             .firstPause = 5ms, .attempts = 4, .limit = 300ms}) {
        auto source = std::make_unique<KWinFrontmost>(bus, folder.path(), patience);
        kept = source->onChange([this] { ++changes; });
        return source;
    }
    static bool isListening(const FakeKWin& kwin) {
        return runUntil([&] { return !kwin.listener.empty(); });
    }
    bool hasFiles() const { return !std::filesystem::is_empty(folder.path()); }
};

}  // namespace

TEST_F(KWinFrontmostTest, theScriptTellsWhichWindowIsActive) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    EXPECT_FALSE(source->canTell());
    ASSERT_TRUE(isListening(kwin));
    kwin.activate("41", "org.example.Editor", "editor");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_THAT(source->inFront(), Optional(FrontWindow{.pid = 41, .names = {"org.example.Editor", "editor"}}));
    const int before = changes;
    kwin.activate("", "", "");
    EXPECT_TRUE(runUntil([&] { return changes > before; }));
    EXPECT_TRUE(source->canTell());
    EXPECT_EQ(source->inFront(), std::nullopt);
}

TEST_F(KWinFrontmostTest, whatIsNoProcessLeavesItToTheNames) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    for (const std::string pid : {"0", "-1", "undefined", "12x", "99999999999999999999"}) {
        const int before = changes;
        kwin.activate(pid, "", "viewer");
        EXPECT_TRUE(runUntil([&] { return changes > before; }));
        EXPECT_THAT(source->inFront(), Optional(FrontWindow{.names = {"viewer"}})) << pid;
    }
}

TEST_F(KWinFrontmostTest, theScriptKnowsTheNamesOfBothKWins) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    EXPECT_THAT(kwin.script, AllOf(HasSubstr("workspace.windowActivated"), HasSubstr("workspace.activeWindow"),
                                   HasSubstr("workspace.clientActivated"), HasSubstr("workspace.activeClient")));
    EXPECT_THAT(kwin.service.argumentsOf("loadScript"),
                ElementsAre("('" + kwin.file + "', 'dev.tolvane.Tolvane.frontmost')"));
}

TEST_F(KWinFrontmostTest, theFileIsTheUsersAloneAndGoesOnceItWasRead) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    EXPECT_EQ(std::filesystem::status(kwin.file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    kwin.activate("1", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinFrontmostTest, whatAnEarlierRunLeftBehindIsReplaced) {
    FakeKWin kwin(daemon.address());
    kwin.isLoaded = true;
    const auto source = begin();
    EXPECT_TRUE(isListening(kwin));
}

TEST_F(KWinFrontmostTest, theScriptIsUnloadedAtTheEnd) {
    const FakeKWin kwin(daemon.address());
    auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    source.reset();
    EXPECT_TRUE(runUntil([&] { return !kwin.isLoaded; }));
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinFrontmostTest, aKWinThatIsNotReadyIsAskedAgain) {
    const FakeKWin kwin(daemon.address(), 2);
    const auto source = begin();
    EXPECT_TRUE(isListening(kwin));
    EXPECT_FALSE(source->isAway());
}

TEST_F(KWinFrontmostTest, aKWinThatTakesNoScriptIsGivenUp) {
    const FakeKWin kwin(daemon.address(), 1000);
    const auto source = begin();
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_EQ(kwin.service.argumentsOf("loadScript").size(), 4U);
    EXPECT_FALSE(source->canTell());
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinFrontmostTest, aScriptThatSaysNothingIsGivenUp) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    EXPECT_FALSE(source->isAway());
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_FALSE(hasFiles());
    kwin.activate("1", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); })) << "better late than never";
    EXPECT_FALSE(source->isAway());
}

TEST_F(KWinFrontmostTest, withoutKWinItIsAway) {
    const auto source = begin();
    EXPECT_FALSE(source->isAway()) << "that is not known yet";
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_FALSE(source->canTell());
}

TEST_F(KWinFrontmostTest, aKWinThatIsStartedAgainGetsTheScriptAgain) {
    auto first = std::make_unique<FakeKWin>(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(*first));
    first->activate("1", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    first.reset();
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_FALSE(source->canTell());
    EXPECT_EQ(source->inFront(), std::nullopt);
    const FakeKWin second(daemon.address());
    ASSERT_TRUE(isListening(second));
    second.activate("2", "b", "b");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_THAT(source->inFront(), Optional(FrontWindow{.pid = 2, .names = {"b", "b"}}));
}

TEST_F(KWinFrontmostTest, aBusThatIsStartedAgainIsUsedAgain) {
    auto first = std::make_unique<FakeKWin>(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(*first));
    first->activate("1", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    daemon.die();
    EXPECT_TRUE(runUntil([&] { return !source->canTell(); }));
    first.reset();
    daemon.start();
    const FakeKWin second(daemon.address());
    ASSERT_TRUE(isListening(second));
    second.activate("2", "b", "b");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
}

TEST_F(KWinFrontmostTest, onlyKWinIsBelieved) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    FakeKWin liar(daemon.address());
    liar.listener = kwin.listener;
    liar.activate("6", "org.example.Liar", "liar");
    runFor(100ms);
    EXPECT_FALSE(source->canTell());
}

TEST_F(KWinFrontmostTest, withoutAFolderForTheScriptItIsGivenUp) {
    const FakeKWin kwin(daemon.address());
    const KWinFrontmost source(bus, folder.at("not there"));
    EXPECT_TRUE(runUntil([&] { return source.isAway(); }));
}

TEST_F(KWinFrontmostTest, canEndWhileAnAnswerIsDue) {
    const FakeKWin kwin(daemon.address());
    for (const auto span : {0ms, 1ms, 3ms, 10ms}) {
        auto source = begin();
        runFor(span);
        source.reset();
    }
    runFor(50ms);
    EXPECT_FALSE(hasFiles());
}

TEST(KWinFrontmost, withoutABusItIsAway) {
    const KWinFrontmost source(std::make_shared<SessionBus>("unix:path=/nowhere/bus"), "/tmp");
    EXPECT_TRUE(runUntil([&] { return source.isAway(); }));
}

}  // namespace tolvane::linuxhost
