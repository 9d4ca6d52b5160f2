#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Preferences.h"

namespace tolvane {

/// One stored choice of the user: its key, and what holds while nothing of its type is stored.
template <typename Value>
struct Preference {
    std::string_view key;
    Value whenAbsent;

    Value in(const Preferences& preferences) const { return preferences.get<Value>(key).value_or(whenAbsent); }
    void store(Preferences& preferences, Value value) const { preferences.set(key, value); }
};

/// The application's own; what a screen remembers of its view stands with the screen.
namespace AppPreferences {

inline constexpr Preference<bool> demo{"demo", false};
inline constexpr Preference<bool> rulesPaused{"rulesPaused", false};
inline constexpr Preference<bool> backupToSyncFolder{"backupToICloud", false};
/// Seconds between two ticks while a window can be seen. Any number holds, also one that the settings do not offer.
inline constexpr Preference<std::int64_t> openInterval{"openInterval", 5};
inline constexpr Preference<bool> notifyOnAction{"notifyOnAction", true};
inline constexpr Preference<bool> notifyAboutSuggestions{"notifyAboutSuggestions", true};
inline constexpr Preference<bool> warnSwapGrowth{"warnSwapGrowth", true};
inline constexpr Preference<Date> lastSwapWarning{"lastSwapWarning", distantPast};
inline constexpr Preference<Date> lastSuggestionNotice{"lastSuggestionNotice", distantPast};
inline constexpr Preference<bool> showTrayIcon{"showInMenuBar", true};
/// The session started the program, not the user: it stays out of the way where a tray can hold it. A switch of the
/// entry that starts it, never stored.
inline constexpr Preference<bool> atLogin{"atLogin", false};
/// Suggestion keys and until when they stay hidden; empty while no map is stored.
inline constexpr std::string_view hiddenSuggestions = "hiddenSuggestions";

}  // namespace AppPreferences

}  // namespace tolvane
