#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "base/Date.h"
#include "base/UUID.h"
#include "core/json/Fields.h"
#include "core/json/Writer.h"

namespace tolvane::json {

template <typename Value>
void write(Writer& writer, const Value& value);

template <typename Record, typename Member>
void writeField(Writer& writer, const Record& record, const Field<Record, Member>& field) {
    const auto& value = record.*field.member;
    if constexpr (isOptional<Member>) {
        if (!value) return;
        writer.key(field.name);
        write(writer, *value);
    } else {
        writer.key(field.name);
        write(writer, value);
    }
}

template <Described Record>
void writeRecord(Writer& writer, const Record& record) {
    writer.beginObject();
    for (std::size_t place = 0; place < fieldCount<Record>; ++place) {
        const std::size_t index = writer.style() == Style::pretty ? sortedFields<Record>[place] : place;
        withField<Record>(index, [&](const auto& field) {
            writeField(writer, record, field);
            return true;
        });
    }
    writer.endObject();
}

template <Chosen Variant>
void writeCase(Writer& writer, const Variant& value) {
    writer.beginObject();
    writer.key(Cases<Variant>::names[value.index()]);
    std::visit([&](const auto& alternative) { writeRecord(writer, alternative); }, value);
    writer.endObject();
}

template <Worded Enumeration>
void writeWord(Writer& writer, Enumeration value) {
    for (const auto& [known, text] : Texts<Enumeration>::texts) {
        if (known == value) return writer.string(text);
    }
}

template <typename Value>
void writeList(Writer& writer, const std::vector<Value>& values) {
    writer.beginList();
    for (const auto& value : values) {
        writer.item();
        write(writer, value);
    }
    writer.endList();
}

template <typename Value>
void writeNumber(Writer& writer, Value value) {
    if constexpr (std::floating_point<Value>) {
        writer.number(value);
    } else if constexpr (std::is_signed_v<Value>) {
        writer.number(static_cast<std::int64_t>(value));
    } else {
        writer.number(static_cast<std::uint64_t>(value));
    }
}

template <typename Value>
void write(Writer& writer, const Value& value) {
    if constexpr (std::same_as<Value, bool>) {
        writer.boolean(value);
    } else if constexpr (std::is_arithmetic_v<Value>) {
        writeNumber(writer, value);
    } else if constexpr (std::same_as<Value, Date>) {
        writer.number(value.time_since_epoch().count());
    } else if constexpr (std::same_as<Value, UUID>) {
        writer.string(value.text());
    } else if constexpr (std::convertible_to<Value, std::string_view>) {
        writer.string(value);
    } else if constexpr (Described<Value>) {
        writeRecord(writer, value);
    } else if constexpr (Chosen<Value>) {
        writeCase(writer, value);
    } else if constexpr (Worded<Value>) {
        writeWord(writer, value);
    } else {
        writeList(writer, value);
    }
}

/// The JSON text of a record or a list of records. Returns nullopt when a number in it is not finite.
template <typename Value>
std::optional<std::string> encode(const Value& value, Style style = Style::compact) {
    Writer writer(style);
    write(writer, value);
    if (writer.failed()) return std::nullopt;
    return std::move(writer).take();
}

}  // namespace tolvane::json
