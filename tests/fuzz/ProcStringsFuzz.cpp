#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/UTF8.h"
#include "platform/macos/kernel/ProcStrings.h"

/// The halves agree with the whole, and the results are valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view block(reinterpret_cast<const char*>(data), size);
    const auto read = tolvane::machost::procStrings(block);
    if (read.args != tolvane::machost::parseProcArgs(block) || read.env != tolvane::machost::parseProcEnv(block))
        std::abort();
    for (const std::string_view text : read.args) {
        if (!tolvane::UTF8::isValid(text)) std::abort();
    }
    for (const std::string_view entry : read.env) {
        if (entry.empty() || !tolvane::UTF8::isValid(entry)) std::abort();
    }
    return 0;
}
