#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <set>

#include "core/advisor/AdviceScene.h"
#include "core/advisor/Advisor.h"
#include "core/sampling/ProcessReader.h"
#include "platform/linux/processes/LinuxProcessInspection.h"
#include "tests/platform/linux/Child.h"

namespace tolvane::linuxhost {
namespace {

using testing::Child;

/// Readings of a real process, five minutes apart on a clock that the test turns.
class Watch {
public:
    explicit Watch(const Child& child) : pid_(child.pid()) {}

    /// False when the process cannot be read.
    bool read() {
        const auto sample = reader_.read(pid_);
        if (!sample) return false;
        row_ = ProcRow{.sample = *sample, .unusedSince = now_};
        // When root runs the test, its child looks like a part of the system.
        row_.sample.hostSaysSystem = false;
        now_ = std::max(now_, row_.sample.startTime) + Seconds{300};
        advisor_.record({row_}, now_);
        return true;
    }

    std::vector<Suggestion> suggestions() const {
        const World world{.rows = {row_}, .selfPID = ::getpid(), .uid = ::getuid()};
        const SystemMemory memory{.total = 1ULL << 44U};
        const std::set<Pid> managed;
        return advisor_.suggestions({.world = world,
                                     .memory = memory,
                                     .now = now_,
                                     .ports = {},
                                     .locale = "en_US",
                                     .managed = managed,
                                     .simulatorName = {}});
    }
    std::optional<Advisor::Growth> growth() const {
        const auto track = advisor_.tracks.find(pid_);
        if (track == advisor_.tracks.end()) return std::nullopt;
        return Advisor::growth(track->second.points, track->second.start);
    }

private:
    Pid pid_;
    LinuxProcessInspection inspection_{
        LinuxInspectionOptions{.clock = LinuxClockFacts::read(), .uid = ::getuid(), .home = "/nowhere"}};
    ProcessReader reader_{inspection_, false};
    Advisor advisor_;
    ProcRow row_;
    Date now_;
};

constexpr std::size_t megabytesPerStep = 10;
/// Half an hour of warm-up, then a little over two hours.
constexpr int steps = 32;

TEST(RealLeak, aChildThatGrowsIsFoundWithItsRate) {
    Child child([] { testing::touch(100); }, [] { testing::touch(megabytesPerStep); });
    Watch watch(child);
    for (int step = 0; step < steps; ++step) {
        child.next();
        ASSERT_TRUE(watch.read());
    }
    const auto growth = watch.growth();
    ASSERT_TRUE(growth);
    const double perHour = 12.0 * megabytesPerStep * (1 << 20);
    EXPECT_NEAR(growth->perHour, perHour, perHour / 10);
    const auto found = watch.suggestions();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().kind, Suggestion::Kind::growing);
    EXPECT_EQ(found.front().pids, std::vector<Pid>{child.pid()});
}

TEST(RealLeak, aChildThatGivesBackWhatItTookIsNot) {
    constexpr std::size_t size = 300U << 20U;
    constexpr std::size_t piece = size / 8;
    const auto step = std::make_shared<std::size_t>(0);
    const auto memory = std::make_shared<char*>(nullptr);
    Child child(
        [memory] {
            testing::touch(100);
            void* mapped = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            *memory = static_cast<char*>(mapped);
        },
        [memory, step] {
            const std::size_t tooth = (*step)++ % 8;
            if (tooth == 0) ::madvise(*memory, size, MADV_DONTNEED);
            std::memset(*memory + tooth * piece, 1, piece);
        });
    Watch watch(child);
    // Ends as it begins: with one piece.
    for (int each = 0; each < steps + 1; ++each) {
        child.next();
        ASSERT_TRUE(watch.read());
        EXPECT_FALSE(watch.growth()) << "at step " << each;
    }
    EXPECT_TRUE(watch.suggestions().empty());
}

}  // namespace
}  // namespace tolvane::linuxhost
