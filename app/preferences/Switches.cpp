#include "app/preferences/Switches.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <optional>
#include <sstream>

namespace tolvane {

namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    return std::ranges::equal(text, lowerCase, {}, lower);
}

std::string_view withoutSign(std::string_view text) { return text.starts_with('-') ? text.substr(1) : text; }

bool isInteger(std::string_view text) {
    const auto digits = withoutSign(text);
    return !digits.empty() && std::ranges::all_of(digits, isDigit);
}

/// Digits, one point, and at least one digit: "1.5", ".5", "2.".
bool isDecimal(std::string_view text) {
    const auto number = withoutSign(text);
    return number.size() > 1 && std::ranges::count(number, '.') == 1 &&
           std::ranges::all_of(number, [](char letter) { return isDigit(letter) || letter == '.'; });
}

std::optional<std::int64_t> integer(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// Uses a stream because libc++'s from_chars cannot read doubles.
std::optional<double> decimal(std::string_view text) {
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double value = 0;
    if (!(stream >> value) || stream.peek() != std::istringstream::traits_type::eof()) return std::nullopt;
    return value;
}

bool isSwitch(std::string_view word) {
    return word.size() > 1 && word.starts_with('-') && !isInteger(word) && !isDecimal(word);
}

}  // namespace

PreferenceValue typedValue(std::string_view text) {
    if (equalsIgnoringCase(text, "yes") || equalsIgnoringCase(text, "true")) return true;
    if (equalsIgnoringCase(text, "no") || equalsIgnoringCase(text, "false")) return false;
    if (isInteger(text)) {
        if (const auto value = integer(text)) return *value;
    }
    if (isInteger(text) || isDecimal(text)) {
        if (const auto value = decimal(text)) return *value;
    }
    return std::string(text);
}

Switches parseSwitches(const std::vector<std::string>& arguments, const std::set<std::string, std::less<>>& knownKeys) {
    Switches switches;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& word = arguments[index];
        if (!isSwitch(word)) {
            switches.words.push_back(word);
            continue;
        }
        const bool hasValue = index + 1 < arguments.size() && !isSwitch(arguments[index + 1]);
        if (hasValue) ++index;
        const std::string key = word.substr(1);
        if (hasValue && knownKeys.contains(key)) {
            switches.overrides.insert_or_assign(key, typedValue(arguments[index]));
        } else {
            switches.unknown.push_back(word);
        }
    }
    return switches;
}

}  // namespace tolvane
