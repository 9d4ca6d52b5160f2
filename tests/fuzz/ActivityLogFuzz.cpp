#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/storage/ActivityFields.h"
#include "core/storage/ActivityLog.h"
#include "tests/fakes/TemporaryFolder.h"

/// A log of any bytes is read; what it holds reads back equal; a limit gives no more than that, the same entries first.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    static const fakes::TemporaryFolder folder;
    folder.write("log", {reinterpret_cast<const char*>(data), size});
    const auto all = readActivity(folder / "log", std::numeric_limits<std::uint64_t>::max());
    for (const auto& entry : all) {
        const auto back = json::decode<ActivityEntry>(*json::encode(entry));
        if (!back || *back != entry) std::abort();
    }
    const auto latest = readActivity(folder / "log", 2);
    if (latest.size() > 2 || !std::equal(latest.begin(), latest.end(), all.begin())) std::abort();
    return 0;
}
