#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

/// Which control groups ran a process since the last sweep; members of the others need not be read. Every group of the
/// unified hierarchy counts its members' CPU time in `cpu.stat`, with or without a controller. An unchanged count means
/// that no member ran, not even for a microsecond: 300 tries with the shortest runs that we could make moved it every
/// time.
///
/// Keeps one descriptor per group with members. Where a group's count cannot be opened or read (descriptors ran out,
/// the group is gone), its members count as running. One thread.
class CgroupGate {
public:
    using Group = std::int32_t;
    static constexpr Group none = -1;

    /// Sets where the unified hierarchy is mounted; call it before the first `join`. Without it, or with an empty
    /// folder, every process counts as running.
    void watch(std::string mount);

    /// Adds a member to the group of this path, as /proc/PID/cgroup gives it. Returns `none` for the root, which counts
    /// the whole machine. The count is read before this returns, so read the process afterwards.
    Group join(std::string_view path);
    /// Removes a member; the last one to leave closes the group. `none` is allowed.
    void leave(Group group);
    /// Reads every group's count.
    void beginSweep();
    /// Whether a member of the group may have run between the last two sweeps. True for `none`.
    bool moved(Group group) const;
    /// False while there are fewer than two groups to tell apart.
    bool isOn() const { return groupsWithMembers_ > 1; }
    std::size_t groups() const { return groupsWithMembers_; }

private:
    struct Slot {
        std::string path;
        FileDescriptor usageFile;
        std::uint64_t usage = 0;
        std::uint32_t members = 0;
        bool moved = true;
    };
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    Group slotFor(std::string_view path);
    void openUsage(Slot& slot) const;
    bool isThreaded(const std::string& path) const;
    void refresh(Slot& slot) const;

    std::string mount_;
    /// Descriptors from this number up are left to the rest of the program.
    int descriptorLimit_ = 0;
    std::vector<Slot> slots_;
    std::vector<Group> free_;
    std::unordered_map<std::string, Group, Hash, std::equal_to<>> byPath_;
    std::size_t groupsWithMembers_ = 0;
};

/// The first line of `cpu.stat`: "usage_usec 211378335".
std::optional<std::uint64_t> parseUsage(std::string_view cpuStat);

}  // namespace tolvane::linuxhost
