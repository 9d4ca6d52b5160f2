#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <sstream>
#include <thread>

#include "platform/linux/processes/LinuxProcessInspection.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using testing::Child;
using testing::contentOf;
using testing::eventually;
using ::testing::HasSubstr;
using testing::Sweeper;
using testing::touch;

namespace {

LinuxInspectionOptions hostOptions() {
    static const LinuxClockFacts clock = LinuxClockFacts::read();
    return {.clock = clock, .uid = ::getuid()};
}

class RealProcess : public ::testing::Test {
protected:
    RealProcess() : inspection_(hostOptions()), sweeper_(inspection_) {}

    const testing::Reading* sweepFor(Pid pid) {
        const auto& readings = sweeper_.sweep();
        const auto found = readings.find(pid);
        return found == readings.end() ? nullptr : &found->second;
    }

    LinuxProcessInspection inspection_;
    Sweeper sweeper_;
};

void burn(std::chrono::milliseconds cpuTime) {
    const auto used = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    const auto end = used() + cpuTime;
    while (used() < end) {
    }
}

std::string wordAt(const std::string& text, int index) {
    std::istringstream words(text);
    std::string word;
    for (int count = 0; count <= index; ++count) words >> word;
    return word;
}

/// A field of stat behind the name, by the manual's number.
std::string plainField(Pid pid, int number) {
    const std::string line = contentOf("/proc/" + std::to_string(pid) + "/stat");
    return wordAt(line.substr(line.rfind(')') + 1), number - 3);
}

std::string plainStatus(Pid pid, const std::string& key) {
    std::istringstream lines(contentOf("/proc/" + std::to_string(pid) + "/status"));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(key + ":")) return wordAt(line, 1);
    }
    return "0";
}

}  // namespace

TEST_F(RealProcess, anExecIsAnotherProgramOfTheSameProcess) {
    Child child({}, [] { ::execl("/bin/sleep", "sleep", "60", nullptr); });
    const auto* before = sweepFor(child.pid());
    ASSERT_TRUE(before);
    const auto old = *before;
    child.nextAndGo();
    ASSERT_TRUE(eventually([&] { return sweepFor(child.pid())->bsd->name == "sleep"; }));
    const auto& now = sweeper_.readings.at(child.pid());
    EXPECT_EQ(now.bsd->startTime, old.bsd->startTime);
    EXPECT_NE(now.bsd->programStamp, old.bsd->programStamp);
    EXPECT_THAT(now.executable->str(), HasSubstr("/bin/sleep"));
    EXPECT_NE(now.executable, old.executable);
    EXPECT_EQ(sweeper_.arguments[child.pid()], (TextList{"sleep", "60"}));
}

TEST_F(RealProcess, aProcessThatRenamesItselfHasTheNewName) {
    Child child({}, [] { ::prctl(PR_SET_NAME, "foo) Z \n(\xff"); });
    const Text before = sweepFor(child.pid())->bsd->name;
    child.next();
    EXPECT_EQ(sweepFor(child.pid())->bsd->name, "foo) Z \n(\xEF\xBF\xBD");
    EXPECT_NE(before, sweeper_.readings[child.pid()].bsd->name);
}

TEST_F(RealProcess, memoryThatGrowsIsSeenInTheNextSweep) {
    Child child({}, [] { touch(64); });
    const auto before = sweepFor(child.pid())->usage->footprint;
    child.next();
    const auto after = sweepFor(child.pid())->usage;
    EXPECT_GE(after->footprint, before + (std::uint64_t{64} << 20));
    EXPECT_EQ(after->peakFootprint, after->footprint);
}

TEST_F(RealProcess, aProcessWithFiftyThreadsIsOneThatUsesTheTimeOfAll) {
    Child child([] {
        for (int count = 0; count < 50; ++count) {
            std::thread([count] {
                if (count == 0) burn(std::chrono::milliseconds(200));
                for (;;) ::pause();
            }).detach();
        }
    });
    ASSERT_TRUE(eventually([&] {
        const auto* reading = sweepFor(child.pid());
        return reading && reading->usage->userTime + reading->usage->systemTime >= 15;
    }));
    const auto pids = inspection_.allPids();
    EXPECT_EQ(std::ranges::count(pids, child.pid()), 1);
}

TEST_F(RealProcess, aZombieIsNoProcess) {
    Child child({}, [] { ::_exit(0); });
    EXPECT_TRUE(sweepFor(child.pid()));
    child.nextAndGo();
    EXPECT_TRUE(eventually([&] { return plainField(child.pid(), 3) == "Z"; }));
    EXPECT_FALSE(sweepFor(child.pid()));
    EXPECT_THAT(inspection_.allPids(), ::testing::Contains(child.pid()));
    EXPECT_FALSE(LinuxProcessInspection(hostOptions()).bsdRecord(child.pid()));
}

TEST_F(RealProcess, aProcessWhoseFirstThreadEndedLives) {
    Child child(
        [] {
            std::thread([] {
                for (;;) ::pause();
            }).detach();
        },
        [] { ::syscall(SYS_exit, 0); });
    ASSERT_TRUE(sweepFor(child.pid()));
    child.nextAndGo();
    ASSERT_TRUE(eventually([&] { return plainField(child.pid(), 3) == "Z"; }));
    const auto* reading = sweepFor(child.pid());
    ASSERT_TRUE(reading);
    EXPECT_GT(reading->usage->footprint, 0u);
}

TEST_F(RealProcess, aStoppedProcessIsThere) {
    Child child({});
    ::kill(child.pid(), SIGSTOP);
    ASSERT_TRUE(eventually([&] { return plainField(child.pid(), 3) == "T"; }));
    const auto* reading = sweepFor(child.pid());
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->bsd->ppid, ::getpid());
}

TEST_F(RealProcess, aProcessOfAnotherUserBelongsToTheSystem) {
    if (::getuid() != 0) GTEST_SKIP() << "needs the right to change the user id";
    Child child({}, [] {
        if (::setgid(12345) != 0 || ::setuid(12345) != 0) ::_exit(1);
    });
    EXPECT_EQ(sweepFor(child.pid())->bsd->uid, 0u);
    child.next();
    ASSERT_TRUE(inspection_.bsdRecord(child.pid()));
    EXPECT_EQ(inspection_.bsdRecord(child.pid())->uid, 12345u);
    EXPECT_EQ(inspection_.belongsToSystem(child.pid()), true);
}

TEST_F(RealProcess, forAnotherUserAShieldedProcessHasNoPathAndNoFolder) {
    if (::getuid() != 0) GTEST_SKIP() << "needs the right to change the user id";
    const pid_t watched = ::getpid();
    const pid_t watcher = ::fork();
    if (watcher == 0) {
        if (::setgid(12345) != 0 || ::setuid(12345) != 0) ::_exit(9);
        LinuxProcessInspection inspection(hostOptions());
        inspection.allPids();
        const auto bsd = inspection.bsdRecord(watched);
        if (!bsd || bsd->uid != 0 || bsd->name.empty()) ::_exit(1);
        if (inspection.executablePath(watched) || inspection.workingDirectory(watched)) ::_exit(2);
        if (bsd->programStamp != 0 || !inspection.usage(watched)) ::_exit(3);
        if (inspection.usage(watched)->footprint == 0 || !inspection.arguments(watched)) ::_exit(4);
        if (!inspection.listeningPorts(watched).empty()) ::_exit(5);
        if (inspection.belongsToSystem(watched) != true) ::_exit(6);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(watcher, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(RealProcess, aProcessOfAnotherPidNamespaceBelongsToTheSystemAndHasNoFolder) {
    if (::getuid() != 0) GTEST_SKIP() << "needs the right to make a pid namespace";
    Child child([] {
        if (::unshare(CLONE_NEWPID) != 0) return;
        if (::fork() != 0) return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::execl("/bin/sleep", "sleep", "60", nullptr);
    });
    Pid inside = 0;
    ASSERT_TRUE(eventually([&] {
        const auto pid = std::to_string(child.pid());
        const auto children = contentOf("/proc/" + pid + "/task/" + pid + "/children");
        std::from_chars(children.data(), children.data() + children.size(), inside);
        const auto* reading = inside ? sweepFor(inside) : nullptr;
        return reading && reading->bsd->name == "sleep";
    }));
    EXPECT_EQ(sweeper_.readings[inside].system, true);
    EXPECT_FALSE(sweeper_.readings[inside].folder);
    EXPECT_NE(sweeper_.readings[child.pid()].system, true);
}

TEST_F(RealProcess, theEnvironmentOfAProcessCanBeRead) {
    Child child({}, [] {
        char name[] = "MARK=of this test";
        char* environment[] = {name, nullptr};
        ::execle("/bin/sleep", "sleep", "60", nullptr, environment);
    });
    child.nextAndGo();
    const std::vector<std::string> expected = {"MARK=of this test"};
    EXPECT_TRUE(eventually([&] { return LinuxProcessInspection(hostOptions()).environment(child.pid()) == expected; }));
}

TEST_F(RealProcess, aTitleOfNodeIsTheCommandThatItNames) {
    if (!std::filesystem::exists("/usr/bin/node") || !std::filesystem::exists("/usr/bin/npm")) {
        GTEST_SKIP() << "needs node and npm in /usr/bin";
    }
    Child child({}, [] {
        char path[] = "PATH=/nowhere:/usr/bin";
        char* environment[] = {path, nullptr};
        ::execle("/usr/bin/node", "node", "-e", "process.title = 'npm run dev'; setTimeout(() => {}, 60000)", nullptr,
                 environment);
    });
    child.nextAndGo();
    const TextList expected = {"node", "/usr/bin/npm", "run", "dev"};
    EXPECT_TRUE(eventually([&] {
        sweeper_.arguments.clear();
        LinuxProcessInspection once(hostOptions());
        return once.arguments(child.pid()) == expected;
    }));
}

TEST_F(RealProcess, aProcessNeverShowsTwoStartTimes) {
    Child child({});
    const auto first = inspection_.bsdRecord(child.pid())->startTime;
    for (int count = 0; count < 3; ++count) {
        EXPECT_EQ(sweepFor(child.pid())->bsd->startTime, first);
        EXPECT_EQ(LinuxProcessInspection(hostOptions()).bsdRecord(child.pid())->startTime, first);
    }
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    EXPECT_NEAR(unixSeconds(first), static_cast<double>(now.tv_sec), 10);
}

TEST_F(RealProcess, aSweepAgreesWithAPlainReading) {
    Child large([] { touch(32); });
    Child renamed([] { ::prctl(PR_SET_NAME, "a) b (c"); });
    for (int count = 0; count < 3; ++count) sweeper_.sweep();
    int compared = 0;
    for (const auto& [pid, reading] : sweeper_.readings) {
        const std::string folder = "/proc/" + std::to_string(pid) + "/";
        if (!std::filesystem::exists(folder) || plainField(pid, 22).empty()) continue;
        ++compared;
        EXPECT_EQ(reading.bsd->startTime, hostOptions().clock.dateOfTicks(std::stoull(plainField(pid, 22))));
        EXPECT_EQ(std::to_string(reading.bsd->uid), plainStatus(pid, "Uid")) << pid;
    }
    EXPECT_GT(compared, 2);
    for (const Pid pid : {large.pid(), renamed.pid()}) {
        const auto& reading = sweeper_.readings.at(pid);
        const std::string folder = "/proc/" + std::to_string(pid) + "/";
        EXPECT_EQ(reading.usage->footprint, std::stoull(plainStatus(pid, "RssAnon")) * 1024);
        EXPECT_EQ(reading.usage->userTime, std::stoull(plainField(pid, 14)));
        EXPECT_EQ(reading.usage->systemTime, std::stoull(plainField(pid, 15)));
        EXPECT_EQ(std::to_string(reading.bsd->ppid), plainField(pid, 4));
        EXPECT_EQ(reading.executable->str(), std::filesystem::read_symlink(folder + "exe"));
        EXPECT_EQ(reading.folder->str(), std::filesystem::read_symlink(folder + "cwd"));
    }
    EXPECT_EQ(sweeper_.readings.at(renamed.pid()).bsd->name, "a) b (c");
}

TEST_F(RealProcess, everyPidThatLivesThroughASweepIsListed) {
    std::set<Pid> before;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (std::isdigit(static_cast<unsigned char>(name.front()))) before.insert(std::stoi(name));
    }
    const auto listed = inspection_.allPids();
    EXPECT_TRUE(std::ranges::is_sorted(listed));
    for (const Pid pid : before) {
        if (!std::filesystem::exists("/proc/" + std::to_string(pid))) continue;
        EXPECT_TRUE(std::ranges::binary_search(listed, pid)) << pid;
    }
}

}  // namespace tolvane::linuxhost
