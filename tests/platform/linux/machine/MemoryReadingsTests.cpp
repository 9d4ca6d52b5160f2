#include "platform/linux/machine/MemoryReadings.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr std::uint64_t kB = 1024;
constexpr std::uint64_t page = 4096;

MemInfo zramMachine() { return parseMemInfo(fixture("linux/zram/proc/meminfo")).value(); }

}  // namespace

TEST(MemInfo, readsTheLinesThatMatter) {
    const MemInfo memory = zramMachine();
    EXPECT_EQ(memory.total, 7965412 * kB);
    EXPECT_EQ(memory.free, 187204 * kB);
    EXPECT_EQ(memory.available, 742316 * kB);
    EXPECT_EQ(memory.buffers, 20544 * kB);
    EXPECT_EQ(memory.cached, 981020 * kB);
    EXPECT_EQ(memory.anonymous, 5013948 * kB);
    EXPECT_EQ(memory.shared, 301800 * kB);
    EXPECT_EQ(memory.reclaimableSlab, 118700 * kB);
    EXPECT_EQ(memory.swapTotal, 8388604 * kB);
    EXPECT_EQ(memory.swapFree, 5243900 * kB);
    EXPECT_EQ(memory.zswap, 0U);
    EXPECT_EQ(memory.zswapped, 0U);
}

TEST(MemInfo, aKernelWithoutZswapLinesTellsNone) {
    const MemInfo memory = parseMemInfo(fixture("linux/zswap-old/proc/meminfo")).value();
    EXPECT_EQ(memory.zswap, std::nullopt);
    EXPECT_EQ(memory.zswapped, std::nullopt);
}

TEST(MemInfo, withoutATotalItIsNone) {
    EXPECT_EQ(parseMemInfo(""), std::nullopt);
    EXPECT_EQ(parseMemInfo("MemFree: 12 kB\n"), std::nullopt);
    EXPECT_EQ(parseMemInfo("MemTotal: many kB\n"), std::nullopt);
}

TEST(MemInfo, brokenLinesAreSkipped) {
    const auto memory =
        parseMemInfo("MemTotal: 8 kB\nMemFree:\n\nCached: -3 kB\nShmem: 99999999999999999999999 kB\nBuffers: 2 kB");
    ASSERT_TRUE(memory);
    EXPECT_EQ(*memory, (MemInfo{.total = 8 * kB, .buffers = 2 * kB}));
}

TEST(VmStat, countsPagesReadBack) {
    EXPECT_EQ(parsePagesSwappedIn(fixture("linux/zram/proc/vmstat")), 60112U);
    EXPECT_EQ(parsePagesSwappedIn(fixture("linux/plain/proc/vmstat")), 0U);
}

TEST(VmStat, withoutTheLineItIsNone) {
    EXPECT_EQ(parsePagesSwappedIn("pswpout 4\n"), std::nullopt);
    EXPECT_EQ(parsePagesSwappedIn("pswpin\n"), std::nullopt);
}

TEST(Swaps, findsTheDevicesOfMemoryOnly) {
    EXPECT_THAT(zramDevices(fixture("linux/zram/proc/swaps")), ElementsAre("zram0"));
    EXPECT_THAT(zramDevices(fixture("linux/zswap/proc/swaps")), IsEmpty());
    EXPECT_THAT(zramDevices(fixture("linux/plain/proc/swaps")), IsEmpty());
    EXPECT_THAT(zramDevices("/home/zram0 file 1 1 1\n/dev/zram1 partition 1 1 1\n/dev/zram12 partition 1 1 1\n"),
                ElementsAre("zram1", "zram12"));
}

TEST(Zram, holdsTheFirstColumnInTheThird) {
    EXPECT_EQ(parseZram("105906176 1487034 2871296 0 2871296 3 0 0 0\n"),
              (CompressedMemory{.occupied = 2871296, .uncompressed = 105906176}));
}

TEST(Zram, aLineWithFewerColumnsIsNone) {
    EXPECT_EQ(parseZram(""), std::nullopt);
    EXPECT_EQ(parseZram("105906176 1487034\n"), std::nullopt);
}

TEST(SharingOut, thePartsAddUpToTheTotal) {
    const MemInfo memory = zramMachine();
    const CompressedMemory compressor{.occupied = 800 * 1024 * kB, .uncompressed = 3000 * 1024 * kB};
    const auto counters = shareOut(memory, compressor, 7, page);
    const std::uint64_t pageCache = memory.buffers + memory.cached - memory.shared;
    const std::uint64_t named = memory.free + pageCache + memory.reclaimableSlab;
    EXPECT_EQ(named / page + counters.internalPages + counters.compressorPages + counters.wiredPages,
              memory.total / page);
}

TEST(SharingOut, internalIsAnonymousAndSharedAndNothingIsPurgeable) {
    const auto counters = shareOut(zramMachine(), {}, 0, page);
    EXPECT_EQ(counters.internalPages, (5013948 + 301800) * kB / page);
    EXPECT_EQ(counters.purgeablePages, 0U);
}

TEST(SharingOut, theCompressorIsTakenOutOfWired) {
    const auto without = shareOut(zramMachine(), {}, 0, page);
    const auto with = shareOut(zramMachine(), {.occupied = 100 * page, .uncompressed = 300 * page}, 0, page);
    EXPECT_EQ(with.compressorPages, 100U);
    EXPECT_EQ(with.uncompressedPagesInCompressor, 300U);
    EXPECT_EQ(without.wiredPages - with.wiredPages, 100U);
}

TEST(SharingOut, figuresThatContradictEachOtherGiveNoWiredMemory) {
    const MemInfo memory{
        .total = 100 * page, .free = 90 * page, .cached = 1 * page, .anonymous = 20 * page, .shared = 5 * page};
    EXPECT_EQ(shareOut(memory, {}, 0, page).wiredPages, 0U);
}

TEST(SharingOut, pagesMayBeLarger) {
    EXPECT_EQ(shareOut(zramMachine(), {}, 3, 16384).internalPages, (5013948 + 301800) * kB / 16384);
    EXPECT_EQ(shareOut(zramMachine(), {}, 3, 16384).swapIns, 3U);
}

}  // namespace tolvane::linuxhost
