#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/rules/RuleFile.h"

/// Whatever can be read is written so that it reads back equal, and merging it twice adds nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const auto rules = RuleFile::decode({reinterpret_cast<const char*>(data), size});
    if (!rules) return rules.failure().what.empty() ? (std::abort(), 0) : 0;
    const auto back = RuleFile::decode(RuleFile::encode(*rules));
    if (!back || *back != *rules) std::abort();
    const auto merged = RuleFile::merge(*rules, {});
    if (RuleFile::merge(*rules, merged) != merged) std::abort();
    return 0;
}
