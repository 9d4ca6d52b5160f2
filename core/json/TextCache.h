#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/Text.h"

namespace tolvane::json {

/// Gives texts that were given lately once more instead of making them anew: names in a log repeat. Of fixed size; a
/// text that is pushed out is made again.
class TextCache {
public:
    Text text(std::string_view wanted) {
        Text& known = known_[place(wanted)];
        if (known != wanted) known = Text(wanted);
        return known;
    }

private:
    /// From the length and both ends: enough to spread names, and cheaper than going over all bytes.
    static std::size_t place(std::string_view text) {
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
        const std::size_t size = std::min(text.size(), sizeof begin);
        std::memcpy(&begin, text.data(), size);
        std::memcpy(&end, text.data() + text.size() - size, size);
        const std::uint64_t mixed = (begin ^ std::rotl(end, 29) ^ text.size()) * 0x9E3779B97F4A7C15U;
        return mixed >> (64U - placeBits);
    }

    static constexpr unsigned placeBits = 9;
    std::array<Text, 1U << placeBits> known_;
};

}  // namespace tolvane::json
