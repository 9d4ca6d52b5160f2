#include "platform/linux/processes/CgroupGate.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Three to five short lines.
using Buffer = std::array<char, 512>;

std::optional<std::string_view> readAt(const FileDescriptor& file, Buffer& buffer) {
    const ssize_t length = ::pread(file.get(), buffer.data(), buffer.size(), 0);
    if (length < 0) return std::nullopt;
    return std::string_view(buffer.data(), static_cast<std::size_t>(length));
}

/// Leaves descriptors for the rest of the program.
constexpr int descriptorsForOthers = 64;

int openFilesLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
    return static_cast<int>(std::min<rlim_t>(limit.rlim_cur, std::numeric_limits<int>::max()));
}

}  // namespace

std::optional<std::uint64_t> parseUsage(std::string_view cpuStat) {
    constexpr std::string_view key = "usage_usec ";
    if (!cpuStat.starts_with(key)) return std::nullopt;
    return Scan::figure(cpuStat.substr(key.size()));
}

void CgroupGate::watch(std::string mount) {
    mount_ = std::move(mount);
    descriptorLimit_ = std::max(openFilesLimit() - descriptorsForOthers, 0);
}

CgroupGate::Group CgroupGate::join(std::string_view path) {
    // Paths with ".." lie outside the part of the hierarchy that we see.
    if (mount_.empty() || path.size() < 2 || path.front() != '/' || path.starts_with("/..")) return none;
    const auto found = byPath_.find(path);
    const Group group = found == byPath_.end() ? slotFor(path) : found->second;
    ++slots_[static_cast<std::size_t>(group)].members;
    return group;
}

CgroupGate::Group CgroupGate::slotFor(std::string_view path) {
    if (free_.empty()) {
        free_.push_back(static_cast<Group>(slots_.size()));
        slots_.emplace_back();
    }
    const Group group = free_.back();
    free_.pop_back();
    Slot& slot = slots_[static_cast<std::size_t>(group)];
    slot.path = path;
    openUsage(slot);
    refresh(slot);
    slot.moved = true;
    byPath_.emplace(slot.path, group);
    ++groupsWithMembers_;
    return group;
}

void CgroupGate::leave(Group group) {
    if (group == none) return;
    Slot& slot = slots_[static_cast<std::size_t>(group)];
    if (--slot.members > 0) return;
    byPath_.erase(slot.path);
    slot = Slot{};
    free_.push_back(group);
    --groupsWithMembers_;
}

/// Threads may be in groups of their own below the one that owns their process; the owner counts them all.
void CgroupGate::openUsage(Slot& slot) const {
    std::string path = mount_ + slot.path;
    while (path.size() > mount_.size() && isThreaded(path)) path.resize(path.rfind('/'));
    if (path.size() > mount_.size()) slot.usageFile = FileDescriptor::open(path + "/cpu.stat", O_RDONLY);
    if (slot.usageFile.get() >= descriptorLimit_) slot.usageFile = FileDescriptor();
}

bool CgroupGate::isThreaded(const std::string& path) const {
    Buffer buffer;
    const auto file = FileDescriptor::open(path + "/cgroup.type", O_RDONLY);
    const auto type = file ? readAt(file, buffer) : std::nullopt;
    return type && type->starts_with("threaded");
}

void CgroupGate::refresh(Slot& slot) const {
    Buffer buffer;
    const auto text = slot.usageFile ? readAt(slot.usageFile, buffer) : std::nullopt;
    const auto usage = text ? parseUsage(*text) : std::nullopt;
    slot.moved = !usage || *usage != slot.usage;
    if (usage) slot.usage = *usage;
}

void CgroupGate::beginSweep() {
    if (!isOn()) return;
    for (Slot& slot : slots_) {
        if (slot.members > 0) refresh(slot);
    }
}

bool CgroupGate::moved(Group group) const {
    return group == none || !isOn() || slots_[static_cast<std::size_t>(group)].moved;
}

}  // namespace tolvane::linuxhost
