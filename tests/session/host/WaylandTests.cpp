#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <QElapsedTimer>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/linux/makeLinuxHost.h"
#include "platform/linux/windows/WaylandToplevels.h"
#include "tests/platform/linux/EventLoop.h"

extern char** environ;

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

/// A terminal's window under a name that the test chooses.
class Terminal {
public:
    explicit Terminal(const std::string& application) {
        const std::string name = "--app-id=" + application;
        const std::vector<const char*> words = {"foot", name.c_str(), "sleep", "60", nullptr};
        EXPECT_EQ(::posix_spawnp(&pid_, "foot", nullptr, nullptr, const_cast<char**>(words.data()), environ), 0);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        if (pid_ > 0 && !hasEnded_) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    bool ends() {
        return runUntil([this] { return hasEnded_ = hasEnded_ || ::waitpid(pid_, nullptr, WNOHANG) == pid_; });
    }

private:
    pid_t pid_ = 0;
    bool hasEnded_ = false;
};

struct WaylandTest : ::testing::Test {
    Host host = makeLinuxHost(processEnvironment(), {});
    std::string applications = std::string(std::getenv("XDG_DATA_HOME")) + "/applications/";
    std::vector<std::string> told;

    std::string describe(const std::string& identifier) const {
        std::filesystem::create_directories(applications);
        std::ofstream(applications + identifier + ".desktop")
            << "[Desktop Entry]\nType=Application\nName=" << identifier << "\nExec=/usr/bin/" << identifier << "\n";
        return applications + identifier + ".desktop";
    }
    std::string inFront() const {
        const auto front = host.frontmost->current();
        return front ? front->appID.value_or("no identifier") : "nobody";
    }
    static void focus(const std::string& application) {
        ::system(("swaymsg -q '[app_id=\"" + application + "\"] focus'").c_str());
    }
};

}  // namespace

TEST_F(WaylandTest, whoIsInFrontIsKnownAndToldWithin200Milliseconds) {
    const std::string editor = describe("org.example.Editor");
    const std::string viewer = describe("org.example.Viewer");
    EXPECT_TRUE(host.frontmost->canTell());
    EXPECT_EQ(host.frontmost->current(), std::nullopt);
    const auto kept = host.frontmost->onActivation([this](std::string path) { told.push_back(std::move(path)); });
    const Terminal first("org.example.Editor");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; })) << inFront();
    const Terminal second("org.example.Viewer");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Viewer"; })) << inFront();
    EXPECT_TRUE(runUntil([&] { return told.size() == 2; }));
    for (const std::string application : {"org.example.Editor", "org.example.Viewer"}) {
        const auto before = told.size();
        focus(application);
        QElapsedTimer elapsed;
        elapsed.start();
        EXPECT_TRUE(runUntil([&] { return told.size() > before; }));
        EXPECT_LT(elapsed.elapsed(), 200);
    }
    EXPECT_THAT(told, ElementsAre(editor, viewer, editor, viewer));
}

TEST_F(WaylandTest, anApplicationIsAskedThroughItsWindow) {
    Terminal terminal("foot");
    std::vector<std::shared_ptr<RunningApplication>> running;
    EXPECT_TRUE(runUntil([&] { return inFront() == "foot"; })) << inFront();
    running = host.running->withAppID("foot");
    ASSERT_THAT(running, SizeIs(1));
    EXPECT_FALSE(running.front()->isTerminated());
    running.front()->terminate();
    EXPECT_TRUE(terminal.ends());
    EXPECT_TRUE(running.front()->isTerminated());
}

TEST_F(WaylandTest, withoutACompositorNobodyCanTell) {
    const Host other =
        makeLinuxHost(environmentOf({{"HOME", std::getenv("HOME")}, {"WAYLAND_DISPLAY", "wayland-77"}}), {});
    EXPECT_FALSE(other.frontmost->canTell());
    EXPECT_EQ(other.frontmost->current(), std::nullopt);
    EXPECT_EQ(WaylandToplevels::connect("", ""), nullptr);
}

}  // namespace tolvane::linuxhost
