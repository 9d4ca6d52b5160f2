#include "platform/linux/machine/OwnMemory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <optional>
#include <string>

#include "base/files/Files.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost::OwnMemory {

namespace {

constexpr int hexadecimal = 16;
/// A program of many libraries has less than a megabyte of them.
constexpr std::size_t mappingsLimit = std::size_t{64} << 20U;

/// Nullopt for a line that begins no mapping, or one of another kind.
///
///     7f2a1c200000-7f2a1c9f1000 r-xp 00200000 fe:00 131330                     /usr/lib/libQt6Gui.so.6.4.2
std::optional<Stretch> unwritableFile(std::string_view line) {
    auto addresses = Scan::word(line);
    const auto permissions = Scan::word(line);
    for (int skipped = 0; skipped < 3; ++skipped) Scan::word(line);
    if (!Scan::skipBlanks(line).starts_with('/') || !permissions.starts_with("r-")) return std::nullopt;
    const auto begin = Scan::figure(Scan::take(addresses, '-'), hexadecimal);
    const auto end = Scan::figure(addresses, hexadecimal);
    if (!begin || !end || *begin >= *end) return std::nullopt;
    return Stretch{.begin = *begin, .end = *end};
}

/// Pages that were written to, such as those the loader relocated, no longer belong to a file.
bool tellsUnchanged(std::string_view line) {
    constexpr std::string_view key = "Anonymous:";
    return line.starts_with(key) && Scan::figure(line.substr(key.size())) == 0U;
}

bool beginsMapping(std::string_view line) {
    const auto first = Scan::word(line);
    return !first.empty() && !first.ends_with(':');
}

std::string ownMappings() { return Files::readKernelFile("/proc/self/smaps", mappingsLimit).value_or(""); }

}  // namespace

std::vector<Stretch> unchangedFiles(std::string_view smaps) {
    std::vector<Stretch> found;
    std::optional<Stretch> mapping;
    while (!smaps.empty()) {
        const auto line = Scan::take(smaps, '\n');
        if (beginsMapping(line)) {
            mapping = unwritableFile(line);
        } else if (mapping && tellsUnchanged(line)) {
            found.push_back(*mapping);
            mapping.reset();
        }
    }
    return found;
}

void giveBack() {
    ::malloc_trim(0);
    for (const auto& [begin, end] : unchangedFiles(ownMappings())) {
        // Locked memory stays, which is fine.
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel names addresses by their numbers
        static_cast<void>(::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED));
    }
}

}  // namespace tolvane::linuxhost::OwnMemory
