#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/rules/ClaudeRoster.h"

/// A roster of any bytes is read or refused with a reason; each worker is asked for once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    std::size_t asked = 0;
    const auto workers = ClaudeRoster::parse({reinterpret_cast<const char*>(data), size},
                                             [&](const std::string&) { return ++asked % 2 == 0; });
    if (workers ? workers->size() != asked : workers.failure().what.empty()) std::abort();
    return 0;
}
