#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "base/UTF8.h"
#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/storage/ActivityEntry.h"
#include "core/storage/ActivityLog.h"
#include "tests/fakes/TemporaryFolder.h"

namespace {

/// Line by line, with the decoder alone.
std::vector<tolvane::ActivityEntry> readPlainly(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::vector<tolvane::ActivityEntry> entries;
    if (!tolvane::UTF8::isValid(text)) return entries;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        auto entry = tolvane::json::decode<tolvane::ActivityEntry>(line);
        if (entry && !line.starts_with(byteOrderMark)) entries.push_back(std::move(*entry));
    }
    std::ranges::reverse(entries);
    return entries;
}

}  // namespace

/// A log of any bytes yields what its lines yield alone; its entries read back equal; a limit gives no more entries
/// than that, the same ones first.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    static const fakes::TemporaryFolder folder;
    folder.write("log", {reinterpret_cast<const char*>(data), size});
    const auto all = readActivity(folder / "log", std::numeric_limits<std::uint64_t>::max());
    if (all != readPlainly({reinterpret_cast<const char*>(data), size})) std::abort();
    for (const auto& entry : all) {
        const auto back = json::decode<ActivityEntry>(*json::encode(entry));
        if (!back || *back != entry) std::abort();
    }
    const auto latest = readActivity(folder / "log", 2);
    if (latest.size() > 2 || !std::equal(latest.begin(), latest.end(), all.begin())) std::abort();
    return 0;
}
