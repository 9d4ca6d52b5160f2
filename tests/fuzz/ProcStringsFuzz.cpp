#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/UTF8.h"
#include "core/sampling/ProcStrings.h"

/// The halves agree with the whole, and the results are valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view block(reinterpret_cast<const char*>(data), size);
    const auto read = tolvane::procStrings(block);
    if (read.args != tolvane::parseProcArgs(block) || read.env != tolvane::parseProcEnv(block)) std::abort();
    for (const std::string_view text : read.args) {
        if (!tolvane::UTF8::isValid(text)) std::abort();
    }
    for (const std::string_view entry : read.env) {
        if (entry.empty() || !tolvane::UTF8::isValid(entry)) std::abort();
    }
    return 0;
}
