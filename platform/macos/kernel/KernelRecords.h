#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Records as the Darwin kernel fills them, byte for byte, written down again so that their readers also build and are
/// tested elsewhere. `darwin/DarwinRecords.cpp` compares each of them with the system's own header.
namespace tolvane::machost {

template <std::size_t size>
using Unread = std::array<std::byte, size>;

/// `proc_bsdinfo`.
struct BSDInfo {
    Unread<16> flagsToPid{};
    std::uint32_t ppid = 0;
    std::uint32_t uid = 0;
    Unread<24> otherUsers{};
    std::array<char, 16> command{};
    /// Ends at the first NUL; a name of full length has none.
    std::array<char, 32> name{};
    Unread<24> filesToNice{};
    /// Seconds since 1970.
    std::uint64_t startSeconds = 0;
    std::uint64_t startMicroseconds = 0;
};
static_assert(sizeof(BSDInfo) == 136);
static_assert(offsetof(BSDInfo, ppid) == 16 && offsetof(BSDInfo, uid) == 20);
static_assert(offsetof(BSDInfo, command) == 48 && offsetof(BSDInfo, name) == 64);
static_assert(offsetof(BSDInfo, startSeconds) == 120 && offsetof(BSDInfo, startMicroseconds) == 128);

/// `rusage_info_v6`. Times are ticks of the timebase, sizes bytes.
struct ResourceUsage {
    Unread<16> uuid{};
    std::uint64_t userTime = 0;
    std::uint64_t systemTime = 0;
    Unread<40> wakeUpsToResident{};
    std::uint64_t physicalFootprint = 0;
    Unread<160> startToLogicalWrites{};
    std::uint64_t lifetimeMaximumFootprint = 0;
    Unread<56> instructionsToFlags{};
    std::uint64_t performanceUserTime = 0;
    std::uint64_t performanceSystemTime = 0;
    Unread<144> performanceInstructionsToEnd{};
};
static_assert(sizeof(ResourceUsage) == 464);
static_assert(offsetof(ResourceUsage, userTime) == 16 && offsetof(ResourceUsage, systemTime) == 24);
static_assert(offsetof(ResourceUsage, physicalFootprint) == 72);
static_assert(offsetof(ResourceUsage, lifetimeMaximumFootprint) == 240);
static_assert(offsetof(ResourceUsage, performanceUserTime) == 304);
static_assert(offsetof(ResourceUsage, performanceSystemTime) == 312);

/// `proc_vnodepathinfo`: the working folder and the root folder.
struct VnodePathInfo {
    Unread<152> folder{};
    /// Ends at the first NUL; may have none.
    std::array<char, 1024> folderPath{};
    Unread<1176> root{};
};
static_assert(sizeof(VnodePathInfo) == 2352 && offsetof(VnodePathInfo, folderPath) == 152);

/// `task_vm_info`, packed to 4 bytes. Sizes are bytes.
#pragma pack(push, 4)
struct TaskMemory {
    Unread<120> virtualSizeToPurgeable{};
    std::uint64_t compressed = 0;
    Unread<220> peaksToDecompressions{};
    std::int64_t ledgerSwapIns = 0;
    Unread<16> neural{};
};
#pragma pack(pop)
inline constexpr std::uint32_t taskMemoryWords = 93;
static_assert(sizeof(TaskMemory) == taskMemoryWords * sizeof(std::uint32_t));
static_assert(offsetof(TaskMemory, compressed) == 120 && offsetof(TaskMemory, ledgerSwapIns) == 348);

/// `proc_fdinfo`.
struct Descriptor {
    std::int32_t number = 0;
    std::uint32_t type = 0;
};
static_assert(sizeof(Descriptor) == 8 && offsetof(Descriptor, type) == 4);

/// `socket_fdinfo` as laid out for a TCP socket; for other sockets the bytes from `foreignPort` on mean something else.
struct SocketInfo {
    Unread<256> fileToBuffers{};
    std::int32_t kind = 0;
    Unread<8> foreignPort{};
    /// In network byte order, in the low half.
    std::int32_t localPort = 0;
    Unread<72> addresses{};
    std::int32_t state = 0;
    Unread<444> timersToEnd{};
};
static_assert(sizeof(SocketInfo) == 792);
static_assert(offsetof(SocketInfo, kind) == 256 && offsetof(SocketInfo, localPort) == 268);
static_assert(offsetof(SocketInfo, state) == 344);

/// `xsw_usage`. Bytes.
struct SwapSpace {
    std::uint64_t total = 0;
    std::uint64_t available = 0;
    std::uint64_t used = 0;
    std::uint32_t pageSize = 0;
    std::int32_t isEncrypted = 0;
};
static_assert(sizeof(SwapSpace) == 32 && offsetof(SwapSpace, used) == 16);

/// `vm_statistics64` with room for what later kernels append. Pages, except `swapIns`, a running total of them.
struct MachineMemory {
    Unread<12> freeToInactive{};
    std::uint32_t wired = 0;
    Unread<72> faults{};
    std::uint32_t purgeable = 0;
    Unread<20> speculativeToCompressions{};
    std::uint64_t swapIns = 0;
    std::uint64_t swapOuts = 0;
    std::uint32_t compressor = 0;
    Unread<8> throttledAndExternal{};
    std::uint32_t internal = 0;
    std::uint64_t uncompressedInCompressor = 0;
    Unread<264> later{};
};
inline constexpr std::uint32_t machineMemoryWords = 104;
/// The words that every kernel since macOS 10.9 fills.
inline constexpr std::uint32_t machineMemoryWordsRead = 38;
static_assert(sizeof(MachineMemory) == machineMemoryWords * sizeof(std::uint32_t));
static_assert(offsetof(MachineMemory, later) == machineMemoryWordsRead * sizeof(std::uint32_t));
static_assert(offsetof(MachineMemory, wired) == 12 && offsetof(MachineMemory, purgeable) == 88);
static_assert(offsetof(MachineMemory, swapIns) == 112 && offsetof(MachineMemory, compressor) == 128);
static_assert(offsetof(MachineMemory, internal) == 140 && offsetof(MachineMemory, uncompressedInCompressor) == 144);

/// Ticks of one core or of all cores: user, system, idle, nice.
using CoreTicks = std::array<std::uint32_t, 4>;
static_assert(sizeof(CoreTicks) == 16);

/// `mach_timebase_info`: nanoseconds per tick as a fraction.
struct Timebase {
    std::uint32_t numerator = 0;
    std::uint32_t denominator = 0;
};
static_assert(sizeof(Timebase) == 8);

}  // namespace tolvane::machost
