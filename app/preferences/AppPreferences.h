#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Preferences.h"

namespace tolvane {

/// One stored choice of the user: its key, and the value that applies while no value of its type is stored.
template <typename Value>
struct Preference {
    std::string_view key;
    Value whenAbsent;

    Value in(const Preferences& preferences) const { return preferences.get<Value>(key).value_or(whenAbsent); }
    void store(Preferences& preferences, Value value) const { preferences.set(key, value); }
};

/// The application's own preferences. A screen declares the ones that it remembers its view by.
namespace AppPreferences {

inline constexpr Preference<bool> demo{"demo", false};
inline constexpr Preference<bool> rulesPaused{"rulesPaused", false};
inline constexpr Preference<bool> backupToSyncFolder{"backupToICloud", false};
/// Seconds between two ticks while a window is visible. Any number is valid, even one that the settings do not offer.
inline constexpr Preference<std::int64_t> openInterval{"openInterval", 5};
inline constexpr Preference<bool> notifyOnAction{"notifyOnAction", true};
inline constexpr Preference<bool> notifyAboutSuggestions{"notifyAboutSuggestions", true};
inline constexpr Preference<bool> warnSwapGrowth{"warnSwapGrowth", true};
inline constexpr Preference<Date> lastSwapWarning{"lastSwapWarning", distantPast};
inline constexpr Preference<Date> lastSuggestionNotice{"lastSuggestionNotice", distantPast};
inline constexpr Preference<bool> showTrayIcon{"showInMenuBar", true};
/// The session started the program, not the user, so it shows no window where there is a tray to live in. The login
/// entry passes it as a switch; it is never stored.
inline constexpr Preference<bool> atLogin{"atLogin", false};
/// Suggestion keys, each with the date until which it stays hidden; empty while no map is stored.
inline constexpr std::string_view hiddenSuggestions = "hiddenSuggestions";

}  // namespace AppPreferences

}  // namespace tolvane
