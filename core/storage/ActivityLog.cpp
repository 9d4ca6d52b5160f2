#include "core/storage/ActivityLog.h"

#include <algorithm>

#include "base/files/LineFile.h"
#include "core/json/Decode.h"
#include "core/json/TextCache.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

namespace {

std::uint64_t countLines(Files::LineFile& file) {
    std::uint64_t count = 0;
    while (file.next()) ++count;
    return count;
}

/// Number of lines before the latest `limit`. Skips counting when all lines are wanted.
std::uint64_t linesBefore(Files::LineFile& file, std::uint64_t limit) {
    if (limit >= file.size()) return 0;
    const std::uint64_t count = countLines(file);
    if (!file.failed()) file.rewind();
    return count > limit ? count - limit : 0;
}

/// Reserves room for the whole file, judging by the part already read, so that a long list is not moved while it grows.
void reserve(std::vector<ActivityEntry>& entries, const Files::LineFile& file) {
    constexpr std::size_t atFirst = 1024;
    if (entries.size() < entries.capacity()) return;
    const double share =
        static_cast<double>(file.position()) / static_cast<double>(std::max<std::uint64_t>(1, file.size()));
    const double expected = share > 0 ? 1.02 * static_cast<double>(entries.size()) / share : 0;
    entries.reserve(std::max(entries.size() + entries.size() / 2 + atFirst, static_cast<std::size_t>(expected)));
}

}  // namespace

std::vector<ActivityEntry> readActivity(const std::string& path, std::uint64_t limit) {
    auto file = Files::LineFile::open(path, simdjson::SIMDJSON_PADDING);
    if (!file) return {};
    for (std::uint64_t left = linesBefore(*file, limit); left > 0; --left) file->next();
    json::TextCache texts;
    json::Decoder decoder(&texts);
    std::vector<ActivityEntry> entries;
    while (const auto line = file->next()) {
        reserve(entries, *file);
        if (!decoder.decodePadded(line->text, entries.emplace_back())) entries.pop_back();
    }
    if (file->failed()) return {};
    std::ranges::reverse(entries);
    return entries;
}

}  // namespace tolvane
