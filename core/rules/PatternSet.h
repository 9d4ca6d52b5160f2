#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane {

/// Texts that are looked for in many others, each once whoever asks for it. One pass over a text finds all of them:
/// its places are compared with the beginnings of all patterns at once.
class PatternSet {
public:
    using Number = std::uint32_t;

    /// The pattern's number, the same for the same pattern. It is not empty. Not after `prepare`.
    Number add(std::string pattern);
    /// To be called once, when all are added.
    void prepare();

    /// Looks for all patterns in the text; after it `isFound` tells which there are.
    void search(std::string_view text);
    bool isFound(Number number) const { return found_[number] == searches_; }

private:
    /// Longer patterns are found by so many bytes at their begin, shorter ones are looked for one by one.
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
    /// By head.
    std::vector<Begin> begins_;
    std::vector<Number> short_;
    std::array<std::uint64_t, (1U << filterBits) / 64> filter_{};
    /// By pattern: the latest search that found it.
    std::vector<std::uint32_t> found_;
    std::uint32_t searches_ = 0;
};

}  // namespace tolvane
