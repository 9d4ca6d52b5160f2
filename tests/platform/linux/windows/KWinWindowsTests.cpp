#include "platform/linux/windows/KWinWindows.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/windows/FakeKWin.h"

namespace tolvane::linuxhost {

namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using testing::FakeKWin;
using ::testing::HasSubstr;
using ::testing::Optional;
using testing::PrivateBus;

struct KWinWindowsTest : ::testing::Test {
    PrivateBus daemon;
    TemporaryFolder folder;
    std::shared_ptr<SessionBus> bus = std::make_shared<SessionBus>(daemon.address());
    int changes = 0;
    Subscription kept;

    std::unique_ptr<KWinWindows> begin(KWinWindows::Patience patience = {
                                           .firstPause = 5ms, .attempts = 4, .limit = 300ms}) {
        auto source = std::make_unique<KWinWindows>(bus, folder.path(), patience);
        kept = source->onChange([this] { ++changes; });
        return source;
    }
    static bool isListening(const FakeKWin& kwin) {
        return runUntil([&] { return !kwin.listener.empty(); });
    }
    bool hasFiles() const { return !std::filesystem::is_empty(folder.path()); }
};

}  // namespace

TEST_F(KWinWindowsTest, theScriptTellsWhichWindowIsActive) {
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

TEST_F(KWinWindowsTest, whatIsNoProcessLeavesItToTheNames) {
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

TEST_F(KWinWindowsTest, theScriptKnowsTheNamesOfBothKWins) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    EXPECT_THAT(kwin.scripts.at(FakeKWin::watching),
                AllOf(HasSubstr("workspace.windowActivated"), HasSubstr("workspace.activeWindow"),
                      HasSubstr("workspace.clientActivated"), HasSubstr("workspace.activeClient")));
    EXPECT_THAT(kwin.argumentsOf("loadScript"), ElementsAre("('" + kwin.file + "', 'dev.tolvane.Tolvane.windows')"));
}

TEST_F(KWinWindowsTest, theFileIsTheUsersAloneAndGoesOnceItWasRead) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    EXPECT_EQ(std::filesystem::status(kwin.file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    kwin.activate("1", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinWindowsTest, whatAnEarlierRunLeftBehindIsReplaced) {
    FakeKWin kwin(daemon.address());
    kwin.scripts[FakeKWin::watching] = "left behind";
    const auto source = begin();
    EXPECT_TRUE(isListening(kwin));
}

TEST_F(KWinWindowsTest, theScriptIsUnloadedAtTheEnd) {
    const FakeKWin kwin(daemon.address());
    auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    source.reset();
    EXPECT_TRUE(runUntil([&] { return !kwin.has(FakeKWin::watching); }));
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinWindowsTest, aKWinThatIsNotReadyIsAskedAgain) {
    const FakeKWin kwin(daemon.address(), 2);
    const auto source = begin();
    EXPECT_TRUE(isListening(kwin));
    EXPECT_FALSE(source->isAway());
}

TEST_F(KWinWindowsTest, aKWinThatTakesNoScriptIsGivenUp) {
    const FakeKWin kwin(daemon.address(), 1000);
    const auto source = begin();
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_EQ(kwin.argumentsOf("loadScript").size(), 4U);
    EXPECT_FALSE(source->canTell());
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinWindowsTest, aScriptThatSaysNothingIsGivenUp) {
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

TEST_F(KWinWindowsTest, withoutKWinItIsAway) {
    const auto source = begin();
    EXPECT_FALSE(source->isAway()) << "that is not known yet";
    EXPECT_TRUE(runUntil([&] { return source->isAway(); }));
    EXPECT_FALSE(source->canTell());
}

TEST_F(KWinWindowsTest, aKWinThatIsStartedAgainGetsTheScriptAgain) {
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

TEST_F(KWinWindowsTest, aBusThatIsStartedAgainIsUsedAgain) {
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

TEST_F(KWinWindowsTest, onlyKWinIsBelieved) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    FakeKWin liar(daemon.address());
    liar.listener = kwin.listener;
    liar.activate("6", "org.example.Liar", "liar");
    runFor(100ms);
    EXPECT_FALSE(source->canTell());
}

TEST_F(KWinWindowsTest, windowsAreKnownAsTheyComeAndGo) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    const auto isEditors = [](const FrontWindow& window) { return window.pid == 41; };
    EXPECT_FALSE(source->any(isEditors));
    kwin.list("40\tplasmashell\tplasmashell\n41\torg.example.Editor\teditor\n\nnonsense\n\t\t");
    EXPECT_TRUE(runUntil([&] { return source->any(isEditors); }));
    EXPECT_TRUE(source->any([](const FrontWindow& window) { return window == FrontWindow{}; }));
    kwin.list("40\tplasmashell\tplasmashell");
    EXPECT_TRUE(runUntil([&] { return !source->any(isEditors); }));
    kwin.list("");
    EXPECT_TRUE(runUntil([&] { return !source->any([](const FrontWindow&) { return true; }); }));
}

TEST_F(KWinWindowsTest, aSecondScriptClosesTheWindowsThatAreMeantAndGoes) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    kwin.list("40\ta\ta\n41\tb'); evil('\tb\\\n41\tc\tc");
    kwin.activate("40", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_EQ(source->askToClose([](const FrontWindow& window) { return window.pid == 42; }), 0U);
    EXPECT_EQ(source->askToClose([](const FrontWindow& window) { return window.pid == 41; }), 2U);
    EXPECT_TRUE(runUntil([&] { return kwin.has(FakeKWin::closing); }));
    EXPECT_THAT(kwin.scripts.at(FakeKWin::closing),
                HasSubstr(R"js(var wanted = ['41\x09b\x27); evil(\x27\x09b\x5c', '41\x09c\x09c'];)js"));
    EXPECT_TRUE(hasFiles());
    kwin.close();
    EXPECT_TRUE(runUntil([&] { return !kwin.has(FakeKWin::closing); }));
    EXPECT_FALSE(hasFiles());
}

TEST_F(KWinWindowsTest, twoWindowsOfOneProcessAreListedApart) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    kwin.list("41\tb\tb\n41\tb\tb");
    kwin.activate("41", "b", "b");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    EXPECT_EQ(source->askToClose([](const FrontWindow& window) { return window.pid == 41; }), 2U);
    EXPECT_TRUE(runUntil([&] { return kwin.has(FakeKWin::closing); }));
    EXPECT_THAT(kwin.scripts.at(FakeKWin::closing), HasSubstr(R"js(var wanted = ['41\x09b\x09b', '41\x09b\x09b'];)js"));
}

TEST_F(KWinWindowsTest, whatIsToBeClosedMeanwhileComesNext) {
    const FakeKWin kwin(daemon.address());
    const auto source = begin();
    ASSERT_TRUE(isListening(kwin));
    kwin.list("40\ta\ta\n41\tb\tb");
    kwin.activate("40", "a", "a");
    EXPECT_TRUE(runUntil([&] { return source->canTell(); }));
    source->askToClose([](const FrontWindow& window) { return window.pid == 40; });
    source->askToClose([](const FrontWindow& window) { return window.pid == 41; });
    EXPECT_TRUE(runUntil([&] { return kwin.has(FakeKWin::closing); }));
    EXPECT_THAT(kwin.scripts.at(FakeKWin::closing), HasSubstr(R"js(['40\x09a\x09a'])js"));
    kwin.close();
    EXPECT_TRUE(runUntil([&] {
        return kwin.has(FakeKWin::closing) &&
               kwin.scripts.at(FakeKWin::closing).find(R"js(['41\x09b\x09b'])js") != std::string::npos;
    }));
}

TEST_F(KWinWindowsTest, withoutAFolderForTheScriptItIsGivenUp) {
    const FakeKWin kwin(daemon.address());
    const KWinWindows source(bus, folder.at("not there"), {.firstPause = 5ms, .attempts = 3, .limit = 300ms});
    EXPECT_TRUE(runUntil([&] { return source.isAway(); }));
}

TEST_F(KWinWindowsTest, canEndWhileAnAnswerIsDue) {
    const FakeKWin kwin(daemon.address());
    for (const auto span : {0ms, 1ms, 3ms, 10ms}) {
        auto source = begin();
        runFor(span);
        source.reset();
    }
    runFor(50ms);
    EXPECT_FALSE(hasFiles());
}

TEST(KWinWindows, withoutABusItIsAway) {
    const KWinWindows source(std::make_shared<SessionBus>("unix:path=/nowhere/bus"), "/tmp");
    EXPECT_TRUE(runUntil([&] { return source.isAway(); }));
}

}  // namespace tolvane::linuxhost
