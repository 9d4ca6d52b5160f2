#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/Text.h"

namespace tolvane::json {

/// Returns the same Text for a text that it saw recently, because names in a log repeat. Of fixed size: an evicted text
/// is made again.
class TextCache {
public:
    Text text(std::string_view wanted) {
        Text& known = known_[place(wanted)];
        if (known != wanted) known = Text(wanted);
        return known;
    }

private:
    /// Hashes the length and both ends: enough to spread names, and cheaper than hashing all bytes.
    static std::size_t place(std::string_view text) {
        const auto [begin, end] = text.size() >= sizeof(std::uint64_t)   ? ends<std::uint64_t>(text)
                                  : text.size() >= sizeof(std::uint32_t) ? ends<std::uint32_t>(text)
                                  : text.empty()                         ? std::pair<std::uint64_t, std::uint64_t>()
                                                                         : ends<std::uint8_t>(text);
        const std::uint64_t mixed = (begin ^ std::rotl(end, 29) ^ text.size()) * 0x9E3779B97F4A7C15U;
        return mixed >> (64U - placeBits);
    }

    /// Copies of a size known at compile time take one instruction each.
    template <typename Word>
    static std::pair<std::uint64_t, std::uint64_t> ends(std::string_view text) {
        Word begin = 0;
        Word end = 0;
        std::memcpy(&begin, text.data(), sizeof begin);
        std::memcpy(&end, text.data() + text.size() - sizeof end, sizeof end);
        return {begin, end};
    }

    static constexpr unsigned placeBits = 9;
    std::array<Text, 1U << placeBits> known_;
};

}  // namespace tolvane::json
