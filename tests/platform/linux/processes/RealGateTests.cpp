#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "platform/linux/processes/LinuxProcessInspection.h"
#include "platform/linux/processes/ProcCgroup.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using testing::Child;
using testing::contentOf;
using testing::eventually;
using testing::Sweeper;
using testing::touch;

namespace {

/// A control group of the test's own in this machine's unified hierarchy.
class OwnGroup {
public:
    explicit OwnGroup(const std::string& name) {
        const std::string mounts = contentOf("/proc/self/mounts");
        const auto mount = cgroupMount(mounts);
        path_ = std::string(mount) + "/tolvane-test-" + std::to_string(::getpid()) + "-" + name;
        made_ = !mount.empty() && ::mkdir(path_.c_str(), 0755) == 0;
    }
    ~OwnGroup() {
        if (made_) eventually([this] { return ::rmdir(path_.c_str()) == 0; });
    }
    OwnGroup(const OwnGroup&) = delete;
    OwnGroup& operator=(const OwnGroup&) = delete;

    bool take(pid_t pid) const {
        if (!made_) return false;
        std::ofstream file(path_ + "/cgroup.procs");
        file << pid << std::flush;
        return file.good();
    }

private:
    std::string path_;
    bool made_ = false;
};

/// Two children of the test, each in its own group; the first one works.
class RealGate : public ::testing::Test {
protected:
    void start(Child::Step work) {
        worker_.emplace(Child::Step{}, std::move(work));
        other_.emplace(Child::Step{});
        if (!first_.take(worker_->pid()) || !second_.take(other_->pid())) {
            GTEST_SKIP() << "needs a unified hierarchy of control groups in which groups can be made";
        }
        LinuxInspectionOptions options{.clock = LinuxClockFacts::read(), .uid = ::getuid()};
        options.observer = [this](std::string_view path) { ++accesses_[std::string(path)]; };
        options.uptime = [this] { return now_; };
        inspection_ = std::make_unique<LinuxProcessInspection>(options);
        sweeper_.emplace(*inspection_);
        sweepPast();
    }
    /// Until the worker is settled and its next re-check is far off.
    void sweepPast() {
        do {
            sweep();
        } while (sweeps_ < 3 || (sweeps_ + static_cast<std::uint64_t>(worker_->pid())) % 16 != 1);
    }
    const testing::Reading& sweep() {
        ++sweeps_;
        accesses_.clear();
        now_ += Seconds{1};
        sweeper_->sweep();
        return sweeper_->readings[worker_->pid()];
    }
    int timesRead(Pid pid) { return accesses_[std::to_string(pid) + "/stat"]; }

    OwnGroup first_{"a"};
    OwnGroup second_{"b"};
    std::optional<Child> worker_;
    std::optional<Child> other_;
    std::unique_ptr<LinuxProcessInspection> inspection_;
    std::optional<Sweeper> sweeper_;
    std::map<std::string, int> accesses_;
    std::uint64_t sweeps_ = 0;
    Seconds now_{0};
};

}  // namespace

TEST_F(RealGate, whoSleepsIsNotReadAndWhoRanIs) {
    start([] {});
    if (IsSkipped()) return;
    for (int count = 0; count < 3; ++count) {
        EXPECT_TRUE(sweep().bsd);
        EXPECT_EQ(timesRead(worker_->pid()), 0);
    }
    for (int count = 0; count < 10; ++count) {
        worker_->next();
        sweep();
        EXPECT_EQ(timesRead(worker_->pid()), 1);
    }
}

TEST_F(RealGate, memoryTakenByOneWhoSleptIsSeen) {
    start([] { touch(32); });
    if (IsSkipped()) return;
    const auto before = sweep().usage->footprint;
    worker_->next();
    EXPECT_GE(sweep().usage->footprint, before + (std::uint64_t{32} << 20));
}

TEST_F(RealGate, aChangeOfFolderOfOneWhoSleptIsSeenWithinFourBusySweeps) {
    start([] {
        if (::chdir("/usr/share") != 0) ::_exit(1);
    });
    if (IsSkipped()) return;
    EXPECT_NE(sweep().folder, "/usr/share");
    bool seen = false;
    for (int count = 0; count < 4 && !seen; ++count) {
        worker_->next();
        seen = sweep().folder == "/usr/share";
    }
    EXPECT_TRUE(seen);
}

TEST_F(RealGate, theEndOfOneWhoSleptIsSeen) {
    start([] { ::_exit(0); });
    if (IsSkipped()) return;
    EXPECT_TRUE(sweep().bsd);
    worker_->nextAndGo();
    EXPECT_TRUE(eventually([&] { return !sweep().bsd; }));
}

TEST_F(RealGate, aGatedReadingEqualsAFreshOne) {
    start([] {});
    if (IsSkipped()) return;
    const auto gated = sweep();
    LinuxProcessInspection fresh({.clock = LinuxClockFacts::read(), .uid = ::getuid()});
    const Pid pid = worker_->pid();
    EXPECT_EQ(fresh.bsdRecord(pid)->name, gated.bsd->name);
    EXPECT_EQ(fresh.usage(pid)->footprint, gated.usage->footprint);
    EXPECT_EQ(fresh.usage(pid)->userTime, gated.usage->userTime);
    EXPECT_EQ(fresh.executablePath(pid), gated.executable);
    EXPECT_EQ(fresh.workingDirectory(pid), gated.folder);
    EXPECT_EQ(fresh.belongsToSystem(pid), gated.system);
}

}  // namespace tolvane::linuxhost
