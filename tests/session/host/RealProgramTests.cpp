#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* mousepad = "org.xfce.mousepad";
constexpr const char* entry = "/usr/share/applications/org.xfce.mousepad.desktop";
constexpr auto startLimit = std::chrono::seconds(30);

/// The distribution's editor; whatever a test leaves running ends with this object.
struct RealEditor : ::testing::Test {
    Desk desk;

    ~RealEditor() override {
        for (const auto& each : desk.host.running->withAppID(mousepad)) each->forceTerminate();
        runUntil([this] { return desk.host.running->withAppID(mousepad).empty(); });
    }

    std::shared_ptr<RunningApplication> started() {
        desk.host.running->openInBackground(entry, [](const auto& error) { EXPECT_EQ(error, std::nullopt); });
        EXPECT_TRUE(runUntil(
            [&] {
                const auto front = desk.host.frontmost->current();
                return front && front->appID == mousepad;
            },
            startLimit));
        const auto running = desk.host.running->withAppID(mousepad);
        EXPECT_THAT(running, SizeIs(1));
        return running.empty() ? nullptr : running.front();
    }
};

}  // namespace

TEST_F(RealEditor, withNothingUnsavedItQuitsAndComesBack) {
    for (int round = 0; round < 2; ++round) {
        const auto editor = started();
        ASSERT_NE(editor, nullptr);
        editor->terminate();
        EXPECT_TRUE(runUntil([&] { return editor->isTerminated(); }));
        EXPECT_THAT(desk.host.running->withAppID(mousepad), IsEmpty());
    }
}

TEST_F(RealEditor, withUnsavedChangesItIsLeftAlone) {
    const auto editor = started();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(runUntil(
        [] {
            ::system("xdotool type --delay 20 'not saved'");
            return ::system("xdotool search --onlyvisible --name '^\\*' >/dev/null 2>&1") == 0;
        },
        startLimit));
    editor->terminate();
    runFor(std::chrono::seconds(8));
    EXPECT_FALSE(editor->isTerminated());
    editor->forceTerminate();
    EXPECT_TRUE(runUntil([&] { return editor->isTerminated(); }));
}

TEST(RealDesktop, aFileOpensInTheUsersProgramForIt) {
    const Desk desk;
    const std::string home = std::getenv("HOME");
    const std::string script = home + "/opened.sh";
    std::ofstream(script) << "#!/bin/sh\necho \"$1\" >" << home << "/opened.part\nmv " << home << "/opened.part "
                          << home << "/opened\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const std::string folder = std::string(std::getenv("XDG_DATA_HOME")) + "/applications";
    std::ofstream(folder + "/org.example.Opener.desktop")
        << "[Desktop Entry]\nType=Application\nName=Opener\nExec=" << script
        << " %f\nMimeType=text/plain;inode/directory;\n";
    std::filesystem::create_directories(std::getenv("XDG_CONFIG_HOME"));
    std::ofstream(std::string(std::getenv("XDG_CONFIG_HOME")) + "/mimeapps.list")
        << "[Default Applications]\ntext/plain=org.example.Opener.desktop\n"
        << "inode/directory=org.example.Opener.desktop\n";
    std::ofstream(home + "/a b.txt") << "text";
    const auto opened = [&] {
        std::ifstream file(home + "/opened");
        std::string line;
        std::getline(file, line);
        return line;
    };
    // The desktop learns of an installed program a moment later.
    for (int attempt = 0; attempt < 5 && opened().empty(); ++attempt) {
        desk.host.desktop->open(home + "/a b.txt");
        runUntil([&] { return !opened().empty(); }, std::chrono::seconds(2));
    }
    EXPECT_EQ(opened(), home + "/a b.txt");
    desk.host.desktop->open(home);
    EXPECT_TRUE(runUntil([&] { return opened() == home; })) << opened();
    desk.host.desktop->open(home + "/not there");
}

}  // namespace tolvane::linuxhost
