#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>

#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"

extern char** environ;

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Optional;

/// A command's output.
std::string outputOf(const std::string& command) {
    std::string text;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return text;
    std::array<char, 4096> buffer{};
    while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr) text += buffer.data();
    ::pclose(pipe);
    return text;
}

/// The distribution's daemon, configured like a desktop's: no notification disappears before it is clicked. It runs a
/// script that records each text it shows.
class RealDaemon {
public:
    RealDaemon() {
        const std::string home = std::getenv("HOME");
        shown_ = home + "/shown";
        const std::string script = home + "/note";
        std::ofstream(script) << "#!/bin/sh\necho \"$DUNST_APP_NAME|$DUNST_SUMMARY|$DUNST_BODY|$DUNST_URGENCY\" >>"
                              << shown_ << "\n";
        const std::string settings = home + "/dunstrc";
        std::ofstream(settings)
            << "[global]\nmarkup = full\n[urgency_low]\ntimeout = 0\n[urgency_normal]\ntimeout = 0\n"
            << "[note]\nsummary = \"*\"\nscript = " << script << "\n";
        ::system(("chmod +x " + script).c_str());
        const std::array<const char*, 4> words = {"dunst", "-conf", settings.c_str(), nullptr};
        EXPECT_EQ(::posix_spawnp(&pid_, "dunst", nullptr, nullptr, const_cast<char**>(words.data()), environ), 0);
        EXPECT_TRUE(runUntil([this] { return answers(); }));
    }
    RealDaemon(const RealDaemon&) = delete;
    RealDaemon& operator=(const RealDaemon&) = delete;
    ~RealDaemon() {
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
        ::unlink(shown_.c_str());
    }

    std::string shown() const {
        std::ifstream file(shown_);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    /// Calling the daemon itself would make the bus start another one.
    bool answers() const {
        return outputOf(
                   "dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus /org/freedesktop/DBus "
                   "org.freedesktop.DBus.GetConnectionUnixProcessID string:org.freedesktop.Notifications "
                   "2>/dev/null") == "   uint32 " + std::to_string(pid_) + "\n";
    }

    pid_t pid_ = 0;
    std::string shown_;
};

}  // namespace

TEST(RealNotifications, oneArrivesWithTitleBodyAndActionAndItsClickComesBack) {
    const Desk desk;
    const RealDaemon daemon;
    std::vector<std::optional<std::string>> told;
    const auto clicks =
        desk.host.notifications->onClick([&](const std::optional<std::string>& section) { told.push_back(section); });
    desk.host.notifications->post(
        {.identifier = "1", .title = "Stopped a < b", .body = "It held 1 GB & <more>.", .section = "activity"});
    EXPECT_TRUE(runUntil([&] { return !daemon.shown().empty(); }));
    EXPECT_EQ(daemon.shown(), "Tolvane|Stopped a < b|It held 1 GB &amp; &lt;more&gt;.|NORMAL\n");
    EXPECT_EQ(outputOf("dunstctl count displayed"), "1\n");
    ::system("dunstctl action 0");
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Optional(std::string("activity"))));
}

TEST(RealNotifications, aDaemonThatWasKilledIsReplacedByTheNext) {
    const Desk desk;
    std::vector<std::optional<std::string>> told;
    const auto clicks =
        desk.host.notifications->onClick([&](const std::optional<std::string>& section) { told.push_back(section); });
    for (const std::string section : {"rules", "history"}) {
        const RealDaemon daemon;
        runFor(std::chrono::milliseconds(100));
        desk.host.notifications->post({.identifier = section, .title = "t", .body = "b", .section = section});
        EXPECT_TRUE(runUntil([&] { return !daemon.shown().empty(); }));
        const auto before = told.size();
        ::system("dunstctl action 0");
        EXPECT_TRUE(runUntil([&] { return told.size() > before; }));
    }
    EXPECT_THAT(told, ElementsAre(Optional(std::string("rules")), Optional(std::string("history"))));
}

}  // namespace tolvane::linuxhost
