#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Date.h"
#include "base/Text.h"
#include "base/UUID.h"
#include "core/json/Fields.h"
#include "core/json/TextCache.h"

namespace tolvane::json {

/// Reads one record in the very form in which it is written: compact, its fields in their order, strings without
/// escapes. Logs are long and nearly all of their lines are such: so they are read in half the time. What looks
/// otherwise in any way, valid or not, is left to `Decoder`. Refers to the text and the cache. One thread.
class AtSight {
public:
    /// `text` is valid UTF-8.
    AtSight(std::string_view text, TextCache& texts)
        : next_(text.data()), end_(text.data() + text.size()), texts_(texts) {}

    /// False when the text is not as written; then `record` holds anything. It has its defaults before.
    template <Described Record>
    bool read(Record& record) {
        if (!take("{")) return false;
        const bool found = [&]<std::size_t... Index>(std::index_sequence<Index...>) {
            return (readField<Record, Index>(record) && ...);
        }(std::make_index_sequence<fieldCount<Record>>{});
        return found && take("}") && next_ == end_;
    }

private:
    /// `,"name":`
    template <Described Record, std::size_t Index>
    static constexpr auto before = [] {
        constexpr std::string_view name = fieldNames<Record>[Index];
        std::array<char, name.size() + 4> text{',', '"'};
        for (std::size_t place = 0; place < name.size(); ++place) text[2 + place] = name[place];
        text[name.size() + 2] = '"';
        text[name.size() + 3] = ':';
        return text;
    }();

    /// A field that may be missing leaves everything as it is when another one stands in its place.
    template <Described Record, std::size_t Index>
    bool readField(Record& record) {
        constexpr auto& field = std::get<Index>(Fields<Record>::fields);
        constexpr auto& text = before<Record, Index>;
        auto& value = record.*field.member;
        const std::string_view expected(text.data(), text.size());
        if (!take(Index == 0 ? expected.substr(1) : expected)) return isOptional<std::remove_cvref_t<decltype(value)>>;
        return readValue(value);
    }

    template <typename Value>
    bool readValue(std::optional<Value>& value) {
        return readValue(value.emplace());
    }
    bool readValue(UUID& value) {
        const auto text = string();
        const auto parsed = text ? UUID::parse(*text) : std::nullopt;
        if (parsed) value = *parsed;
        return parsed.has_value();
    }
    bool readValue(Text& value) {
        const auto text = string();
        if (text) value = texts_.text(*text);
        return text.has_value();
    }
    bool readValue(bool& value) {
        value = take("true");
        return value || take("false");
    }
    bool readValue(std::uint64_t& value) {
        const auto number = digits();
        value = number.value;
        return number.count > 0;
    }
    bool readValue(Date& value);

    bool take(std::string_view expected) {
        if (static_cast<std::size_t>(end_ - next_) < expected.size()) return false;
        if (std::memcmp(next_, expected.data(), expected.size()) != 0) return false;
        next_ += expected.size();
        return true;
    }

    struct Digits {
        std::uint64_t value = 0;
        int count = 0;
    };
    /// As many as surely fit, and no zero before others; else none.
    Digits digits();
    Digits digitsWithZeros();
    struct Decimal {
        Digits whole;
        Digits fraction;
    };
    static std::optional<double> exactly(const Decimal& number);
    bool readNearest(const char* begin, Date& value) const;

    std::optional<std::string_view> string();
    const char* endOfPlain(const char* from) const;

    static constexpr int mostDigits = 19;

    const char* next_;
    const char* end_;
    TextCache& texts_;
};

inline AtSight::Digits AtSight::digitsWithZeros() {
    Digits number;
    for (; next_ != end_ && *next_ >= '0' && *next_ <= '9'; ++next_) {
        if (++number.count > mostDigits) return {};
        number.value = number.value * 10 + static_cast<std::uint64_t>(*next_ - '0');
    }
    return number;
}

inline AtSight::Digits AtSight::digits() {
    const bool beginsWithZero = next_ != end_ && *next_ == '0';
    const auto number = digitsWithZeros();
    return beginsWithZero && number.count > 1 ? Digits{} : number;
}

inline bool AtSight::readValue(Date& value) {
    const char* begin = next_;
    Decimal number;
    number.whole = digits();
    const bool hasFraction = next_ != end_ && *next_ == '.';
    if (hasFraction) {
        ++next_;
        number.fraction = digitsWithZeros();
    }
    if (number.whole.count == 0 || (hasFraction && number.fraction.count == 0)) return false;
    const auto seconds = exactly(number);
    if (seconds) value = Date{Seconds{*seconds}};
    return seconds || readNearest(begin, value);
}

/// A whole number of 53 bits divided by a power of ten is rounded once, so that the result is the nearest one.
inline std::optional<double> AtSight::exactly(const Decimal& number) {
    constexpr std::array<double, 10> powers{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr std::uint64_t mostExact = std::uint64_t{1} << 53U;
    const auto places = static_cast<std::size_t>(number.fraction.count);
    if (places >= powers.size() || number.whole.count + number.fraction.count >= mostDigits) return std::nullopt;
    const auto together = number.whole.value * static_cast<std::uint64_t>(powers[places]) + number.fraction.value;
    if (together > mostExact) return std::nullopt;
    return static_cast<double>(together) / powers[places];
}

inline bool AtSight::readNearest(const char* begin, Date& value) const {
#ifdef __cpp_lib_to_chars
    double seconds = 0;
    const auto read = std::from_chars(begin, next_, seconds);
    value = Date{Seconds{seconds}};
    return read.ec == std::errc() && read.ptr == next_;
#else
    static_cast<void>(begin);
    static_cast<void>(value);
    return false;
#endif
}

inline std::optional<std::string_view> AtSight::string() {
    if (!take("\"")) return std::nullopt;
    const char* begin = next_;
    const char* end = endOfPlain(begin);
    if (end == end_ || *end != '"') return std::nullopt;
    next_ = end + 1;
    return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

/// The first quote, backslash or control character, eight at a time.
inline const char* AtSight::endOfPlain(const char* from) const {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t tops = 0x80 * ones;
    const auto zeros = [](std::uint64_t word) { return (word - ones) & ~word & tops; };
    static_assert(std::endian::native == std::endian::little);
    for (std::uint64_t word = 0; end_ - from >= static_cast<std::ptrdiff_t>(sizeof word); from += sizeof word) {
        std::memcpy(&word, from, sizeof word);
        const std::uint64_t controls = (word - ' ' * ones) & ~word & tops;
        // Above the first find there may be false ones.
        const std::uint64_t found = zeros(word ^ ('"' * ones)) | zeros(word ^ ('\\' * ones)) | controls;
        if (found != 0) return from + std::countr_zero(found) / 8;
    }
    while (from != end_ && *from != '"' && *from != '\\' && static_cast<unsigned char>(*from) >= ' ') ++from;
    return from;
}

}  // namespace tolvane::json
