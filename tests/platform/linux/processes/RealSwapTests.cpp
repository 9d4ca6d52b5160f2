#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/swap.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "base/files/FileDescriptor.h"
#include "core/history/HistoryMath.h"
#include "core/sampling/ProcessReader.h"
#include "core/sampling/SystemMemory.h"
#include "platform/linux/machine/LinuxMachineStatistics.h"
#include "platform/linux/processes/LinuxProcessInspection.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/TemporaryFolder.h"

#ifndef MADV_PAGEOUT
#define MADV_PAGEOUT 21
#endif

namespace tolvane::linuxhost {
namespace {

using testing::Child;

constexpr std::size_t childBytes = 16U << 20U;
constexpr auto keptThem = "this machine's kernel keeps in memory what it is told to send out";
constexpr std::size_t swapBytes = 48U << 20U;
const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));

/// A swap file for one test, where the machine allows it. One test at a time has one: the kernel's counters cover the
/// whole machine.
class SwapFile {
public:
    SwapFile() : turn_(::open("/proc/swaps", O_RDONLY | O_CLOEXEC)), path_(folder_.at("swap")) {
        ::flock(turn_.get(), LOCK_EX);
        isOn_ = make() && ::swapon(path_.c_str(), 0) == 0;
    }
    ~SwapFile() {
        if (isOn_) ::swapoff(path_.c_str());
    }
    SwapFile(const SwapFile&) = delete;
    SwapFile& operator=(const SwapFile&) = delete;

    bool isOn() const { return isOn_; }

private:
    /// What mkswap writes: version and last page behind the boot block, the signature at the end of the first page.
    bool make() const {
        std::string bytes(swapBytes, '\0');
        const std::array<std::uint32_t, 2> header{1, static_cast<std::uint32_t>(swapBytes / page - 1)};
        std::memcpy(bytes.data() + 1024, header.data(), sizeof header);
        std::memcpy(bytes.data() + page - 10, "SWAPSPACE2", 10);
        std::ofstream(path_, std::ios::binary) << bytes;
        return ::chmod(path_.c_str(), 0600) == 0;
    }

    FileDescriptor turn_;
    TemporaryFolder folder_;
    std::string path_;
    bool isOn_ = false;
};

/// A number in a kernel file, such as "pswpin 12" or "SwapFree: 64 kB".
std::uint64_t kernelFigure(const std::string& file, const std::string& name) {
    std::istringstream text(testing::contentOf(file));
    std::string word;
    while (text >> word) {
        std::uint64_t figure = 0;
        if (word == name && text >> figure) return figure;
    }
    return 0;
}

struct KernelSwap {
    std::uint64_t used = 0;
    std::uint64_t readBack = 0;
    bool operator==(const KernelSwap&) const = default;

    static KernelSwap now() {
        const auto kilobytes = kernelFigure("/proc/meminfo", "SwapTotal:") - kernelFigure("/proc/meminfo", "SwapFree:");
        return {.used = kilobytes * 1024, .readBack = kernelFigure("/proc/vmstat", "pswpin") * page};
    }
};

struct Reading {
    SystemMemory ours;
    KernelSwap kernels;
};

/// The pages in memory, including those the kernel keeps after writing them out.
std::vector<std::size_t> residentPages(char* memory) {
    std::vector<unsigned char> flags(childBytes / page);
    ::mincore(memory, childBytes, flags.data());
    std::vector<std::size_t> resident;
    for (std::size_t index = 0; index < flags.size(); ++index)
        if ((flags[index] & 1U) != 0) resident.push_back(index);
    return resident;
}

/// Until most of it is only on the disk, for half a minute at most. A freshly written page stays in memory until it is
/// examined and sent out a second time. Pages already out are left there: on a slow disk, reading all of them back each
/// round would never end.
void sendOut(char* memory) {
    ::madvise(memory, childBytes, MADV_PAGEOUT);
    for (int turn = 0; turn < 600; ++turn) {
        const auto resident = residentPages(memory);
        if (resident.size() < childBytes / page / 8) return;
        ::usleep(50'000);
        for (const auto index : resident) static_cast<void>(*static_cast<volatile char*>(memory + index * page));
        ::madvise(memory, childBytes, MADV_PAGEOUT);
    }
}

/// Both at a moment when nothing moved between them.
Reading readBoth(const LinuxMachineStatistics& machine) {
    Reading reading;
    EXPECT_TRUE(testing::eventually([&] {
        reading.kernels = KernelSwap::now();
        reading.ours = SystemMemory::read(machine);
        return KernelSwap::now() == reading.kernels;
    }));
    return reading;
}

Moment momentOf(const Reading& reading, Date date) {
    return {.date = date, .swapUsed = reading.ours.swapUsed, .swapIns = reading.ours.swapIns};
}

struct RealSwapTest : ::testing::Test {
    LinuxMachineStatistics machine;
    std::unique_ptr<SwapFile> swap;
    std::unique_ptr<Child> child;

    void SetUp() override {
        if (::geteuid() != 0) GTEST_SKIP() << "only root may add swap";
        swap = std::make_unique<SwapFile>();
        if (!swap->isOn()) GTEST_SKIP() << "this machine takes no swap file";
        const auto memory = std::make_shared<char*>(nullptr);
        const auto isOut = std::make_shared<bool>(false);
        child = std::make_unique<Child>(
            [memory] {
                void* mapped = ::mmap(nullptr, childBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
                *memory = static_cast<char*>(mapped);
                std::memset(*memory, 1, childBytes);
            },
            // Out the first time, back the second time.
            [memory, isOut] {
                if (!*isOut) {
                    sendOut(*memory);
                } else {
                    std::memset(*memory, 2, childBytes);
                }
                *isOut = !*isOut;
            });
    }
    void TearDown() override { child.reset(); }
};

TEST_F(RealSwapTest, growthAndReadBackAreTheKernels) {
    const Date start;
    const auto before = readBoth(machine);
    child->next();
    const auto out = readBoth(machine);
    const auto grown = static_cast<std::int64_t>(out.kernels.used - before.kernels.used);
    const std::vector moments = {momentOf(before, start)};
    const auto growth =
        HistoryMath::swapGrowth(moments, static_cast<std::int64_t>(out.ours.swapUsed), start + Seconds{900});
    ASSERT_TRUE(growth);
    EXPECT_EQ(growth->amount, grown);

    child->next();
    const auto back = readBoth(machine);
    const auto kernels = back.kernels.readBack - out.kernels.readBack;
    const std::vector later = {momentOf(out, start)};
    const auto readBack = HistoryMath::readBack(later, back.ours.swapIns, start + Seconds{900});
    ASSERT_TRUE(readBack);
    EXPECT_EQ(readBack->amount, kernels);
    // The comparison held either way, but too little was sent out to show much.
    if (grown < static_cast<std::int64_t>(childBytes / 2) || kernels < childBytes / 2) GTEST_SKIP() << keptThem;
}

TEST_F(RealSwapTest, whatOfAProcessIsOutCountsAsItsCompressedPart) {
    LinuxProcessInspection inspection(
        LinuxInspectionOptions{.clock = LinuxClockFacts::read(), .uid = ::getuid(), .home = "/nowhere"});
    ProcessReader reader(inspection, false);
    const auto before = reader.read(child->pid());
    child->next();
    const auto out = reader.read(child->pid());
    ASSERT_TRUE(before && out);
    const auto kernels = kernelFigure("/proc/" + std::to_string(child->pid()) + "/status", "VmSwap:") * 1024;
    EXPECT_EQ(out->compressed, kernels);
    EXPECT_GE(out->footprint, childBytes);
    EXPECT_EQ(out->swapIns, 0U) << "the kernel does not count it per process";
    if (kernels < childBytes / 2) GTEST_SKIP() << keptThem;
}

}  // namespace
}  // namespace tolvane::linuxhost
