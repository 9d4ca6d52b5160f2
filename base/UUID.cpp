#include "base/UUID.h"

#include <uuid/uuid.h>

namespace tolvane {

namespace {

constexpr std::size_t textLength = 36;
constexpr unsigned highestDigit = 15;
constexpr unsigned noDigit = 0x100;

constexpr bool isHyphenPlace(std::size_t place) { return place == 8 || place == 13 || place == 18 || place == 23; }

constexpr std::array<std::uint16_t, 256> digits = [] {
    std::array<std::uint16_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < 10; ++value) values['0' + value] = static_cast<std::uint16_t>(value);
    for (std::size_t value = 0; value < 6; ++value) {
        values['a' + value] = values['A' + value] = static_cast<std::uint16_t>(10 + value);
    }
    return values;
}();

unsigned digit(char character) { return digits[static_cast<unsigned char>(character)]; }

}  // namespace

UUID UUID::random() {
    UUID result;
    uuid_generate_random(result.bytes.data());
    return result;
}

// Written by hand: libuuid takes half as long to parse one id as everything else takes for a line of a log, and logs
// are long.
std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength) return std::nullopt;
    UUID result;
    std::size_t place = 0;
    unsigned seen = 0;
    for (auto& byte : result.bytes) {
        if (isHyphenPlace(place) && text[place++] != '-') return std::nullopt;
        const unsigned high = digit(text[place++]);
        const unsigned low = digit(text[place++]);
        byte = static_cast<std::uint8_t>(high << 4U | low);
        seen |= high | low;
    }
    if (seen > highestDigit) return std::nullopt;
    return result;
}

std::string UUID::text() const {
    std::array<char, textLength + 1> buffer{};
    uuid_unparse_upper(bytes.data(), buffer.data());
    return buffer.data();
}

}  // namespace tolvane
