#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <QElapsedTimer>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/linux/makeLinuxHost.h"
#include "tests/platform_linux/EventLoop.h"

extern char** environ;

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr auto startLimit = std::chrono::seconds(30);

/// A real editor under a name of the test's choice, with a program file and an entry of its own.
class Editor {
public:
    explicit Editor(const std::string& identifier)
        : program_(variable("XDG_DATA_HOME") + "/programs/" + identifier),
          entry(variable("XDG_DATA_HOME") + "/applications/" + identifier + ".desktop") {
        for (const std::string& file : {program_, entry})
            std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::filesystem::copy_file("/usr/bin/mousepad", program_, std::filesystem::copy_options::overwrite_existing);
        std::ofstream(entry) << "[Desktop Entry]\nType=Application\nName=" << identifier << "\nExec=" << program_
                             << "\n";
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor() { end(); }

    void start() {
        const std::vector<const char*> words = {program_.c_str(), "--disable-server", nullptr};
        EXPECT_EQ(::posix_spawn(&pid_, program_.c_str(), nullptr, nullptr, const_cast<char**>(words.data()), environ),
                  0);
    }
    void end() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        ::waitpid(std::exchange(pid_, 0), nullptr, 0);
    }

private:
    static std::string variable(const char* name) { return std::getenv(name); }

    std::string program_;
    pid_t pid_ = 0;

public:
    std::string entry;
};

std::string inFront(const Host& host) {
    const auto front = host.frontmost->current();
    return front ? front->bundleIdentifier.value_or("no identifier") : "nobody";
}

bool scriptIsLoaded() {
    return ::system(
               "gdbus call --session --dest org.kde.KWin --object-path /Scripting --method "
               "org.kde.kwin.Scripting.isScriptLoaded dev.tolvane.Tolvane.frontmost | grep -q true") == 0;
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

TEST(KWin, itsWindowsAreNotClosedForOthers) {
    Editor editor("org.example.Editor");
    const Host host = makeLinuxHost(processEnvironment(), {});
    const auto kept = host.frontmost->onActivation([](const std::string&) {});
    editor.start();
    EXPECT_TRUE(runUntil([&] { return inFront(host) == "org.example.Editor"; }, startLimit)) << inFront(host);
    const auto running = host.running->withBundleIdentifier("org.example.Editor");
    ASSERT_THAT(running, SizeIs(1));
    running.front()->terminate();
    runFor(std::chrono::seconds(6));
    EXPECT_FALSE(running.front()->isTerminated()) << "who cannot see windows asks nobody";
}

}  // namespace tolvane::linuxhost
