#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/files/Files.h"
#include "core/storage/HistoryLog.h"
#include "tests/fakes/TemporaryFolder.h"

/// A history of any bytes is read; once trimmed, it no longer changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    static const fakes::TemporaryFolder folder;
    const auto path = folder / "history";
    folder.write("history", {reinterpret_cast<const char*>(data), size});
    const Date now{Seconds{800'000'000}};
    const auto moments = readAndTrimHistory(path, now, Seconds{86400});
    const auto trimmed = Files::read(path);
    if (readAndTrimHistory(path, now, Seconds{86400}) != moments || Files::read(path) != trimmed) std::abort();
    return 0;
}
