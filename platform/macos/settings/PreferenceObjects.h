#pragma once

#include <optional>

#include "platform/Preferences.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Converts preferences to property-list objects and back. Nullopt for types that are not ours. Any thread, within a
/// `Pool`.
std::optional<PreferenceValue> preferenceOf(const Runtime& runtime, Id object);
Id objectOf(const Runtime& runtime, const PreferenceValue& value);

}  // namespace tolvane::machost
