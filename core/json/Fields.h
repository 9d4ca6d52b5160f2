#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

/// A record describes its JSON once, for reading and writing. A field may be missing exactly when its member is an
/// optional.
namespace tolvane::json {

template <typename Record, typename Member>
struct Field {
    std::string_view name;
    Member Record::* member;
};

/// Specialised per record, next to it: `static constexpr auto fields = std::tuple(Field{"id", &Rule::id}, ...);` in the
/// order in which they are written.
template <typename Record>
struct Fields;

/// Specialised per enumeration: `static constexpr std::array texts = {std::pair{Kind::one, "one"sv}, ...};`
template <typename Enumeration>
struct Texts;

/// Specialised per variant of records, which is written as an object whose only key names the alternative: `static
/// constexpr std::array<std::string_view, N> names`, in the order of the variant.
template <typename Variant>
struct Cases;

template <typename Type>
concept Described = requires { Fields<Type>::fields; };
template <typename Type>
concept Worded = requires { Texts<Type>::texts; };
template <typename Type>
concept Chosen = requires { Cases<Type>::names; };

template <typename Type>
inline constexpr bool isOptional = false;
template <typename Type>
inline constexpr bool isOptional<std::optional<Type>> = true;

template <Described Record>
inline constexpr std::size_t fieldCount = std::tuple_size_v<std::remove_cvref_t<decltype(Fields<Record>::fields)>>;

template <Described Record>
inline constexpr auto fieldNames =
    std::apply([](const auto&... field) { return std::array<std::string_view, sizeof...(field)>{field.name...}; },
               Fields<Record>::fields);

/// Indices of the fields, sorted by name.
template <Described Record>
inline constexpr auto sortedFields = [] {
    std::array<std::size_t, fieldCount<Record>> order{};
    for (std::size_t index = 0; index < order.size(); ++index) {
        std::size_t place = index;
        for (; place > 0 && fieldNames<Record>[index] < fieldNames<Record>[order[place - 1]]; --place) {
            order[place] = order[place - 1];
        }
        order[place] = index;
    }
    return order;
}();

/// Calls `visit` with the field at `index` and returns its result, or false when there is no such field.
template <Described Record, typename Visit>
constexpr bool withField(std::size_t index, const Visit& visit) {
    return [&]<std::size_t... Index>(std::index_sequence<Index...>) {
        bool result = false;
        static_cast<void>(((Index == index && (result = visit(std::get<Index>(Fields<Record>::fields)), true)) || ...));
        return result;
    }(std::make_index_sequence<fieldCount<Record>>{});
}

}  // namespace tolvane::json
