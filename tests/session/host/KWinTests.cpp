#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/linux/makeLinuxHost.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Editor.h"
#include "tests/session/host/WakeUps.h"

namespace tolvane::linuxhost {

namespace {

using testing::Editor;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr auto startLimit = std::chrono::seconds(30);

std::string inFront(const Host& host) {
    const auto front = host.frontmost->current();
    return front ? front->appID.value_or("no identifier") : "nobody";
}

bool scriptIsLoaded() {
    return ::system(
               "gdbus call --session --dest org.kde.KWin --object-path /Scripting --method "
               "org.kde.kwin.Scripting.isScriptLoaded dev.tolvane.Tolvane.windows | grep -q true") == 0;
}

}  // namespace

TEST(KWin, itsScriptTellsWhoIsInFrontWithin200MillisecondsAndGoesAtTheEnd) {
    Editor editor("org.example.Editor");
    Editor viewer("org.example.Viewer");
    {
        const Host host = makeLinuxHost(processEnvironment(), {});
        std::vector<std::string> told;
        const auto kept = host.frontmost->onActivation([&](std::string path) { told.push_back(std::move(path)); });
        EXPECT_TRUE(runUntil([&] { return host.frontmost->canTell(); }));
        EXPECT_TRUE(scriptIsLoaded());
        EXPECT_EQ(inFront(host), "nobody");
        editor.start();
        EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Editor"; }, startLimit)) << inFront(host);
        viewer.start();
        EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Viewer"; }, startLimit)) << inFront(host);
        viewer.end();
        QElapsedTimer elapsed;
        elapsed.start();
        EXPECT_TRUE(runUntil([&] { return told.size() == 3; }));
        EXPECT_LT(elapsed.elapsed(), 200);
        EXPECT_THAT(told, ElementsAre(editor.entry, viewer.entry, editor.entry));
    }
    EXPECT_FALSE(scriptIsLoaded());
}

TEST(KWin, anEditorIsAskedThroughItsWindowAndAnotherIsLeftAlone) {
    Editor editor("org.example.Editor");
    Editor viewer("org.example.Viewer");
    const Host host = makeLinuxHost(processEnvironment(), {});
    const auto kept = host.frontmost->onActivation([](const std::string&) {});
    editor.start();
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Editor"; }, startLimit)) << inFront(host);
    viewer.start();
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Viewer"; }, startLimit)) << inFront(host);
    const auto running = host.running->withAppID("org.example.Editor");
    ASSERT_THAT(running, SizeIs(1));
    EXPECT_FALSE(running.front()->isTerminated());
    running.front()->terminate();
    EXPECT_TRUE(runUntil([&] { return running.front()->isTerminated(); }));
    EXPECT_TRUE(editor.hasExited()) << "it closed its window, and was not killed";
    EXPECT_EQ(inFront(host), "org.example.Viewer");
}

TEST(KWin, bothWindowsOfOneProcessAreClosed) {
    Editor editor("org.example.Editor");
    const auto folder = std::filesystem::path(editor.entry).parent_path();
    const Host host = makeLinuxHost(processEnvironment(), {});
    const auto kept = host.frontmost->onActivation([](const std::string&) {});
    EXPECT_TRUE(runUntil([&] { return host.frontmost->canTell(); }));
    for (const char* name : {"a.txt", "b.txt"}) std::ofstream(folder / name) << name;
    editor.start({folder / "a.txt", folder / "b.txt"});
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Editor"; }, startLimit)) << inFront(host);
    runFor(std::chrono::seconds(1));  // the second window opens behind the first
    const auto running = host.running->withAppID("org.example.Editor");
    ASSERT_THAT(running, SizeIs(1));
    running.front()->terminate();
    EXPECT_TRUE(runUntil([&] { return running.front()->isTerminated(); }));
    EXPECT_TRUE(editor.hasExited()) << "it closed both windows, and was not killed";
}

TEST(KWin, aQuietSessionCostsNoWakeUps) {
    const Host host = makeLinuxHost(processEnvironment(), {});
    const auto kept = host.frontmost->onActivation([](const std::string&) {});
    EXPECT_TRUE(runUntil([&] { return host.frontmost->canTell(); }));
    EXPECT_LE(testing::fewestWakeUps(8), 2);
}

}  // namespace tolvane::linuxhost
