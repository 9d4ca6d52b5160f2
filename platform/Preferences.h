#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/Date.h"

namespace tolvane {

using PreferenceDates = std::map<std::string, Date, std::less<>>;
using PreferenceValue = std::variant<bool, std::int64_t, double, std::string, Date, PreferenceDates>;

/// The user's stored choices, typed. A value of a type other than the one asked for counts as absent.
/// Main thread. `set` returns once the value is on disk; a value that the disk refuses holds for this run only.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<PreferenceValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, PreferenceValue value) = 0;

    template <typename Type>
    std::optional<Type> get(std::string_view key) const {
        const auto found = value(key);
        if (!found || !std::holds_alternative<Type>(*found)) return std::nullopt;
        return std::get<Type>(*found);
    }
};

/// Puts this run's values on top of the stored preferences; null leaves them as stored.
using PreferencesLayer = std::function<std::unique_ptr<Preferences>(std::unique_ptr<Preferences> stored)>;

}  // namespace tolvane
