#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane {

/// Patterns to look for in many texts; a pattern that several rules want is kept once. One pass over a text finds all
/// of them: it compares each position with the beginnings of all patterns at once.
class PatternSet {
public:
    using Number = std::uint32_t;

    /// Returns the pattern's number; equal patterns share one. The pattern must not be empty. Call before `prepare`.
    Number add(std::string pattern);
    /// Call once, after adding all patterns.
    void prepare();

    /// Looks for all patterns in the text; `isFound` then says which ones it contains.
    void search(std::string_view text);
    bool isFound(Number number) const { return found_[number] == searches_; }

private:
    /// Patterns at least this long are found by their first bytes; shorter ones are searched one by one.
    using Head = std::uint32_t;
    static constexpr unsigned filterBits = 12;

    struct Begin {
        Head head = 0;
        Number number = 0;
    };

    static Head headAt(const char* text);
    static std::uint32_t hash(Head head) { return (head * 0x9E3779B1U) >> (32U - filterBits); }
    bool mayBegin(std::uint32_t hash) const { return (filter_[hash / 64] >> (hash % 64) & 1U) != 0; }
    void tryAt(std::string_view rest, Head head);

    std::vector<std::string> patterns_;
    /// Sorted by head.
    std::vector<Begin> begins_;
    std::vector<Number> short_;
    std::array<std::uint64_t, (1U << filterBits) / 64> filter_{};
    /// By pattern: the latest search that found it.
    std::vector<std::uint32_t> found_;
    std::uint32_t searches_ = 0;
};

}  // namespace tolvane
