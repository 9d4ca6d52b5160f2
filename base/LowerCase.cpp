#include "base/LowerCase.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>

namespace tolvane {

namespace {

bool isPlain(std::string_view text) {
    // No early exit, so the compiler vectorises the loop.
    unsigned all = 0;
    for (const char character : text) all |= static_cast<unsigned char>(character);
    return all < 0x80;
}

char lowerPlain(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

void appendLowerCased(std::string& result, std::string_view text) {
    if (!isPlain(text)) {
        icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())})
            .toLower(icu::Locale::getRoot())
            .toUTF8String(result);
        return;
    }
    const auto before = result.size();
    result.resize(before + text.size());
    std::ranges::transform(text, result.begin() + static_cast<std::ptrdiff_t>(before), lowerPlain);
}

std::string lowerCased(std::string_view text) {
    std::string result;
    appendLowerCased(result, text);
    return result;
}

}  // namespace tolvane
