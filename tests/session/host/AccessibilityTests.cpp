#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <cstdlib>

#include "platform/linux/makeLinuxHost.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"
#include "tests/session/host/Editor.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using testing::Editor;
using ::testing::ElementsAre;

/// The host of a session whose display server does not list its windows.
Host hostThatOnlyHears() {
    const auto environment = processEnvironment();
    return makeLinuxHost(
        [environment](const std::string& name) -> std::optional<std::string> {
            if (name == "XDG_SESSION_TYPE") return "wayland";
            return name == "DISPLAY" ? std::nullopt : environment(name);
        },
        {});
}

std::string inFront(const Host& host) {
    const auto front = host.frontmost->current();
    return front ? front->appID.value_or("no identifier") : "nobody";
}

/// A starting program asks which events are wanted, and holds its first ones back until it knows.
void startAndSettle(const Desk& desk, Editor& editor) {
    editor.start();
    EXPECT_TRUE(runUntil([&] { return desk.windowOf(editor.pid()).has_value(); }, std::chrono::seconds(30)));
    runFor(std::chrono::seconds(1));
}

}  // namespace

TEST(Accessibility, programsTellTheirTurnsWithin200Milliseconds) {
    Desk desk;
    Editor editor("org.example.Reader");
    Editor viewer("org.example.Writer");
    const Host host = hostThatOnlyHears();
    std::vector<std::string> told;
    const auto kept = host.frontmost->onActivation([&](std::string path) { told.push_back(std::move(path)); });
    EXPECT_FALSE(host.frontmost->canTell());
    startAndSettle(desk, editor);
    startAndSettle(desk, viewer);
    desk.activate(editor.pid());
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Reader"; })) << inFront(host);
    told.clear();
    for (const Pid pid : {viewer.pid(), editor.pid(), viewer.pid()}) {
        const auto before = told.size();
        desk.activate(pid);
        QElapsedTimer elapsed;
        elapsed.start();
        EXPECT_TRUE(runUntil([&] { return told.size() > before; }));
        EXPECT_LT(elapsed.elapsed(), 200);
    }
    EXPECT_THAT(told, ElementsAre(viewer.entry, editor.entry, viewer.entry));
}

TEST(Accessibility, nobodyCanTellWhileAProgramWithoutItIsInFront) {
    Desk desk;
    Editor editor("org.example.Reader");
    const Host host = hostThatOnlyHears();
    const auto kept = host.frontmost->onActivation([](const std::string&) {});
    startAndSettle(desk, editor);
    desk.install("org.example.Mute", "plain");
    const Pid mute = desk.start("org.example.Mute", "plain");
    desk.activate(editor.pid());
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Reader"; })) << inFront(host);
    desk.activate(mute);
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "nobody"; }));
    EXPECT_FALSE(host.frontmost->canTell());
}

}  // namespace tolvane::linuxhost
