#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "base/Date.h"
#include "base/Result.h"
#include "base/Text.h"
#include "base/UUID.h"
#include "core/json/Error.h"
#include "core/json/Fields.h"
#include "core/json/Reading.h"
#include "core/json/Simdjson.h"
#include "core/json/TextCache.h"

/// Reads records in one forward pass. Unknown keys are validated and ignored, the last of a repeated key wins, and null
/// under an optional key means absent. Include from .cpp files only: the header of the library is large.
namespace tolvane::json {

namespace ondemand = simdjson::ondemand;

template <typename Value>
bool read(ondemand::value source, Value& value, Reading& reading);

/// Accepts an integer, or a decimal without a fraction: 60.0 is 60.
template <std::integral Integer>
bool readInteger(ondemand::value source, Integer& value, Reading& reading) {
    using Wide = std::conditional_t<std::is_signed_v<Integer>, std::int64_t, std::uint64_t>;
    Wide wide = 0;
    double decimal = 0;
    if (source.get(wide) == simdjson::SUCCESS) {
        if (!std::in_range<Integer>(wide)) return reading.fail("a number out of range");
        value = static_cast<Integer>(wide);
        return true;
    }
    if (source.get(decimal) != simdjson::SUCCESS) return reading.fail("not an integer");
    if (std::trunc(decimal) != decimal) return reading.fail("not an integer");
    // The upper limit is a power of two: exact as a double, and the first value that does not fit.
    const double limit = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    const double lowest = std::is_signed_v<Integer> ? -limit : 0;
    if (decimal < lowest || decimal >= limit) return reading.fail("a number out of range");
    value = static_cast<Integer>(decimal);
    return true;
}

constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/// The contents of a string without escapes, which most are, in place and without a copy. Returns nullopt for any other
/// value. Does not consume the value.
inline std::optional<std::string_view> plainString(ondemand::value& source) {
    std::string_view token = source.raw_json_token();
    // Compact text has no blanks here, and searching for a set of characters costs more than looking at the last one.
    while (!token.empty() && isBlank(token.back())) token.remove_suffix(1);
    if (token.size() < 2 || token.front() != '"' || token.back() != '"') return std::nullopt;
    if (std::memchr(token.data(), '\\', token.size())) return std::nullopt;
    return token.substr(1, token.size() - 2);
}

inline bool readString(ondemand::value source, std::string_view& text, Reading& reading) {
    if (const auto plain = plainString(source)) {
        text = *plain;
        return source.get_raw_json_string().error() == simdjson::SUCCESS || reading.fail("not a string");
    }
    if (source.get(text) == simdjson::SUCCESS) return true;
    return reading.fail("not a string");
}

template <Worded Enumeration>
bool readWord(ondemand::value source, Enumeration& value, Reading& reading) {
    std::string_view text;
    if (!readString(source, text, reading)) return false;
    for (const auto& [known, word] : Texts<Enumeration>::texts) {
        if (word != text) continue;
        value = known;
        return true;
    }
    return reading.fail("unknown value \"" + std::string(text) + "\"");
}

/// Reads any type that is stored as a string.
template <typename Value>
bool readText(ondemand::value source, Value& value, Reading& reading) {
    std::string_view text;
    if (!readString(source, text, reading)) return false;
    if constexpr (std::same_as<Value, Text>) {
        value = reading.texts ? reading.texts->text(text) : Text(text);
    } else if constexpr (std::same_as<Value, UUID>) {
        const auto parsed = UUID::parse(text);
        if (!parsed) return reading.fail("not a UUID");
        value = *parsed;
    } else {
        value.assign(text);
    }
    return true;
}

template <typename Value>
bool readOptional(ondemand::value source, std::optional<Value>& value, Reading& reading) {
    if (bool null = false; source.is_null().get(null) == simdjson::SUCCESS && null) {
        value.reset();
        return true;
    }
    return read(source, value.emplace(), reading);
}

/// The index of the field with this key, or `fieldCount` for an unknown key.
template <Described Record>
std::size_t fieldNamed(ondemand::field& field) {
    const auto& names = fieldNames<Record>;
    std::string_view key;
    if (field.unescaped_key().get(key) != simdjson::SUCCESS) return names.size();
    std::size_t index = 0;
    while (index < names.size() && names[index] != key) ++index;
    return index;
}

template <Described Record>
inline constexpr std::uint64_t requiredFields = std::apply(
    [](const auto&... field) {
        std::uint64_t bits = 0;
        std::uint64_t bit = 1;
        ((bits |= isOptional<std::remove_cvref_t<decltype(std::declval<Record>().*field.member)>> ? 0 : bit,
          bit <<= 1U),
         ...);
        return bits;
    },
    Fields<Record>::fields);

template <Described Record>
bool hasAllFields(std::uint64_t seen, Reading& reading) {
    const std::uint64_t missing = requiredFields<Record> & ~seen;
    if (missing == 0) return true;
    static_cast<void>(reading.fail("missing"));
    return reading.within(fieldNames<Record>[static_cast<std::size_t>(std::countr_zero(missing))]);
}

/// Reads the fields of one object.
template <Described Record>
class RecordReader {
public:
    RecordReader(ondemand::object& object, Record& record, Reading& reading)
        : object_(object), record_(record), reading_(reading) {}

    bool run() {
        if (object_.begin().get(next_) || object_.end().get(end_)) return reading_.fail("not an object");
        return take() && readInOrder(std::make_index_sequence<fieldCount<Record>>{}) && readOthers() &&
               hasAllFields<Record>(seen_, reading_);
    }

private:
    /// Makes the next field the current one.
    bool take() {
        isAtEnd_ = !(next_ != end_);
        if (isAtEnd_) return true;
        const auto error = (*next_).get(field_);
        return !error || reading_.fail(error);
    }
    bool advance() {
        ++next_;
        return take();
    }

    /// Most records are stored in the order in which they were written. One pass over the fields in that order finds
    /// most of them, with names and types that the compiler knows.
    template <std::size_t... Index>
    bool readInOrder(std::index_sequence<Index...>) {
        return (readIfNamed<Index>() && ...);
    }
    template <std::size_t Index>
    bool readIfNamed() {
        constexpr auto name = fieldNames<Record>[Index];
        if (isAtEnd_ || !field_.key().unsafe_is_equal(name)) return true;
        return readAs<Index>() && advance();
    }
    template <std::size_t Index>
    bool readAs() {
        constexpr auto& field = std::get<Index>(Fields<Record>::fields);
        seen_ |= std::uint64_t{1} << Index;
        return read(field_.value(), record_.*field.member, reading_) || reading_.within(field.name);
    }

    /// Reads the remaining fields, in any order.
    bool readOthers() {
        while (!isAtEnd_) {
            if (!readOther(fieldNamed<Record>(field_)) || !advance()) return false;
        }
        return true;
    }
    bool readOther(std::size_t index) {
        if (index == fieldCount<Record>) return skip(field_.value(), reading_);
        return [&]<std::size_t... Index>(std::index_sequence<Index...>) {
            return ((Index != index || readAs<Index>()) && ...);
        }(std::make_index_sequence<fieldCount<Record>>{});
    }

    ondemand::object& object_;
    Record& record_;
    Reading& reading_;
    ondemand::object_iterator next_;
    ondemand::object_iterator end_;
    ondemand::field field_;
    bool isAtEnd_ = false;
    std::uint64_t seen_ = 0;
};

/// `Source` is a value or a whole document.
template <Described Record, typename Source>
bool readRecord(Source&& source, Record& record, Reading& reading) {
    static_assert(fieldCount<Record> < 64);
    ondemand::object object;
    if (source.get_object().get(object) != simdjson::SUCCESS) return reading.fail("not an object");
    return RecordReader<Record>(object, record, reading).run();
}

/// Which cases the keys of an object name, as bits. Unknown keys are ignored.
template <Chosen Variant>
std::optional<std::uint64_t> casesNamed(ondemand::object& object, Reading& reading) {
    std::uint64_t found = 0;
    for (auto next : object) {
        ondemand::field field;
        std::string_view key;
        if (std::move(next).get(field) != simdjson::SUCCESS || field.unescaped_key().get(key) != simdjson::SUCCESS) {
            static_cast<void>(reading.fail("not valid JSON"));
            return std::nullopt;
        }
        for (std::size_t index = 0; index < Cases<Variant>::names.size(); ++index) {
            if (Cases<Variant>::names[index] == key) found |= std::uint64_t{1} << index;
        }
        if (!skip(field.value(), reading)) return std::nullopt;
    }
    return found;
}

template <typename Variant, std::size_t Index = 0>
bool readAlternative(ondemand::value source, std::size_t index, Variant& value, Reading& reading) {
    if constexpr (Index < std::variant_size_v<Variant>) {
        if (index != Index) return readAlternative<Variant, Index + 1>(source, index, value, reading);
        return readRecord(source, value.template emplace<Index>(), reading);
    }
    return false;
}

template <Chosen Variant>
bool readCase(ondemand::value source, Variant& value, Reading& reading) {
    ondemand::object object;
    if (source.get_object().get(object) != simdjson::SUCCESS) return reading.fail("not an object");
    const auto found = casesNamed<Variant>(object, reading);
    if (!found) return false;
    if (std::popcount(*found) != 1) return reading.fail("Invalid number of keys found, expected one.");
    const auto index = static_cast<std::size_t>(std::countr_zero(*found));
    const auto name = Cases<Variant>::names[index];
    if (object.reset().error() != simdjson::SUCCESS) return reading.fail("not valid JSON");
    for (auto next : object) {
        ondemand::field field;
        std::string_view key;
        if (const auto error = std::move(next).get(field)) return reading.fail(error);
        if (field.unescaped_key().get(key) != simdjson::SUCCESS || key != name) continue;
        if (!readAlternative(field.value(), index, value, reading)) return reading.within(name);
    }
    return true;
}

template <typename Value, typename Source>
bool readList(Source&& source, std::vector<Value>& values, Reading& reading) {
    ondemand::array array;
    if (source.get_array().get(array) != simdjson::SUCCESS) return reading.fail("not a list");
    values.clear();
    for (auto next : array) {
        ondemand::value element;
        if (const auto error = std::move(next).get(element)) return reading.fail(error);
        if (!read(element, values.emplace_back(), reading)) return reading.within(values.size() - 1);
    }
    return true;
}

template <typename Value>
bool readMap(ondemand::value source, std::map<std::string, Value>& values, Reading& reading) {
    ondemand::object object;
    if (source.get_object().get(object) != simdjson::SUCCESS) return reading.fail("not an object");
    values.clear();
    for (auto next : object) {
        ondemand::field field;
        std::string_view key;
        if (const auto error = std::move(next).get(field)) return reading.fail(error);
        if (field.unescaped_key().get(key) != simdjson::SUCCESS) return reading.fail("a key that is no string");
        Value& value = values[std::string(key)] = Value{};
        if (!read(field.value(), value, reading)) return reading.within(key);
    }
    return true;
}

template <typename Value>
bool read(ondemand::value source, std::optional<Value>& value, Reading& reading) {
    return readOptional(source, value, reading);
}
template <typename Value>
bool read(ondemand::value source, std::vector<Value>& values, Reading& reading) {
    return readList(source, values, reading);
}
template <typename Value>
bool read(ondemand::value source, std::map<std::string, Value>& values, Reading& reading) {
    return readMap(source, values, reading);
}

template <typename Value>
bool read(ondemand::value source, Value& value, Reading& reading) {
    if constexpr (std::same_as<Value, bool>) {
        return source.get(value) == simdjson::SUCCESS || reading.fail("not a boolean");
    } else if constexpr (std::integral<Value>) {
        return readInteger(source, value, reading);
    } else if constexpr (std::same_as<Value, double>) {
        return source.get(value) == simdjson::SUCCESS || reading.fail("not a number");
    } else if constexpr (std::same_as<Value, Date>) {
        double seconds = 0;
        if (!read(source, seconds, reading)) return false;
        value = Date{Seconds{seconds}};
        return true;
    } else if constexpr (Described<Value>) {
        value = Value{};
        return readRecord(source, value, reading);
    } else if constexpr (Chosen<Value>) {
        return readCase(source, value, reading);
    } else if constexpr (Worded<Value>) {
        return readWord(source, value, reading);
    } else {
        return readText(source, value, reading);
    }
}

template <typename Value>
bool readDocument(ondemand::document& document, std::vector<Value>& values, Reading& reading) {
    return readList(document, values, reading);
}
template <Described Record>
bool readDocument(ondemand::document& document, Record& record, Reading& reading) {
    return readRecord(document, record, reading);
}

/// Reads records, or lists of records, one after the other and keeps its buffers between them. One thread.
class Decoder {
public:
    /// `texts`, if given, lets equal texts share their bytes. It outlives the decoder.
    explicit Decoder(TextCache* texts = nullptr) { reading_.texts = texts; }

    /// `text` must be followed by `simdjson::SIMDJSON_PADDING` readable bytes. On failure `value` holds what was read
    /// so far and `error` says why.
    template <typename Value>
    bool decodePadded(std::string_view text, Value& value) {
        reading_.error = {};
        ondemand::document document;
        const simdjson::padded_string_view padded(text, text.size() + simdjson::SIMDJSON_PADDING);
        if (!hasRoomFor(text.size())) return reading_.fail(simdjson::MEMALLOC);
        if (const auto error = parser_.iterate(padded).get(document)) return reading_.fail(error);
        return readDocument(document, value, reading_) && isAtEnd(document, reading_);
    }
    const Error& error() const { return reading_.error; }

private:
    /// The library's buffer for unescaped strings has the size of its capacity, is not checked, and fits each string
    /// once. Strings of a case are read twice: when the cases are counted and when one is read.
    bool hasRoomFor(std::size_t size) {
        const std::size_t wanted = timesRead * size;
        if (parser_.capacity() >= wanted) return true;
        return parser_.allocate(std::max(wanted, leastRoom), parser_.max_depth()) == simdjson::SUCCESS;
    }

    static constexpr std::size_t timesRead = 2;
    /// Fits most lines of a log, so that the buffer is allocated once.
    static constexpr std::size_t leastRoom = 4096;

    ondemand::parser parser_;
    Reading reading_;
};

/// Reads a document that is one record or a list of them. Skips a leading byte order mark.
template <typename Value>
Result<Value, Error> decode(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    const simdjson::padded_string padded(text);
    Decoder decoder;
    Value value{};
    if (!decoder.decodePadded(std::string_view(padded), value)) return decoder.error();
    return value;
}

}  // namespace tolvane::json
