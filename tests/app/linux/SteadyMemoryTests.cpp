#include <malloc.h>

#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TOLVANE_OTHER_ALLOCATOR
#endif
#endif

/// A machine on which processes come and go in a cycle of a hundred ticks, some reusing another's pid.
struct SteadyMemoryTest : ModelTest {
    static constexpr int round = 100;

    void SetUp() override {
#ifdef TOLVANE_OTHER_ALLOCATOR
        GTEST_SKIP() << "a sanitizer's allocator does not tell what is in use";
#endif
        for (Pid pid = 100; pid < 140; ++pid) describe(world.add(pid, "node"), pid);
    }

    void describe(fakes::FakeProcess& process, Pid pid) {
        process.usage->footprint = static_cast<std::uint64_t>(10 + pid % 40) * MiB;
        process.arguments = {"node", "server.js", std::to_string(pid)};
        process.memory = MemoryRecord{.compressed = MiB};
        process.cwd = Text("/home/ada/shop" + std::to_string(pid % 5));
        if (pid % 3 == 0)
            process.path = Text("/Applications/App" + std::to_string(pid % 7) + ".app/Contents/MacOS/App");
    }

    void churn(int tick) {
        const auto place = static_cast<std::size_t>(tick % 40);
        const Pid pid = 100 + (tick % round) * 3;
        auto& process = world.processes[place];
        process = {};
        process.pid = pid;
        process.bsd = BSDRecord{.ppid = 1, .uid = 501, .name = "node", .startTime = clock.now()};
        process.path = Text("/opt/node");
        describe(process, pid);
        burn(world.processes[(place + 7) % 40].pid, 50, 60s);
        if (tick % 5 == 0) world.activate("/Applications/App3.app");
        if (tick % 7 == 0) lowerPriority({pid});
    }

    void run(int ticks) {
        for (int tick = 0; tick < ticks; ++tick) {
            churn(tick);
            clock.advance(60s);
            world.asked.clear();
        }
    }

    static std::size_t bytesInUse() {
        const auto use = mallinfo2();
        return use.uordblks + use.hblkhd;
    }
};

TEST_F(SteadyMemoryTest, tenThousandTicksOverAChurningMachineTakeNoMoreThanThreeThousand) {
    start();
    // The day's moments reach their limit after 1,441 ticks.
    run(3000);
    const auto before = bytesInUse();
    run(7000);
    const auto after = bytesInUse();
    EXPECT_EQ(model->moments->size(), 1441U);
    EXPECT_GE(model->loadHistory->size(), 60U);
    // A leak of little more than nine bytes per tick exceeds this.
    EXPECT_LT(after, before + 64 * 1024) << "from " << before << " bytes";
}

}  // namespace
}  // namespace tolvane
