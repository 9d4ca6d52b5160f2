#include "app/screens/rules/PatternList.h"

namespace tolvane::PatternList {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> patterns;
    while (!text.empty()) {
        const auto comma = text.find(',');
        if (const auto pattern = trimmed(text.substr(0, comma)); !pattern.empty()) patterns.emplace_back(pattern);
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    }
    return patterns;
}

std::string join(const std::vector<std::string>& patterns) {
    std::string text;
    for (const auto& pattern : patterns) text.append(text.empty() ? "" : ", ").append(pattern);
    return text;
}

}  // namespace tolvane::PatternList
