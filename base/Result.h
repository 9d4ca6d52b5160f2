#pragma once

#include <utility>
#include <variant>

namespace tolvane {

/// A value, or the reason why there is none.
template <typename Value, typename Failure>
class [[nodiscard]] Result {
public:
    // Implicit, so that a function can return either one directly.
    // NOLINTNEXTLINE(google-explicit-constructor)
    Result(Value value) : content_(std::in_place_index<0>, std::move(value)) {}
    // NOLINTNEXTLINE(google-explicit-constructor)
    Result(Failure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }
    /// Precondition: there is a value.
    Value& operator*() { return *std::get_if<0>(&content_); }
    const Value& operator*() const { return *std::get_if<0>(&content_); }
    Value* operator->() { return std::get_if<0>(&content_); }
    const Value* operator->() const { return std::get_if<0>(&content_); }
    /// Precondition: there is no value.
    const Failure& failure() const { return *std::get_if<1>(&content_); }

    Value valueOr(Value other) && { return *this ? std::move(**this) : std::move(other); }

private:
    std::variant<Value, Failure> content_;
};

}  // namespace tolvane
