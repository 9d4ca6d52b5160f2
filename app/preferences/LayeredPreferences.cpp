#include "app/preferences/LayeredPreferences.h"

#include <utility>

namespace tolvane {

LayeredPreferences::LayeredPreferences(std::unique_ptr<Preferences> stored, Overrides overrides)
    : stored_(std::move(stored)), overrides_(std::move(overrides)) {}

std::optional<PreferenceValue> LayeredPreferences::value(std::string_view key) const {
    const auto found = overrides_.find(key);
    if (found != overrides_.end()) return found->second;
    return stored_->value(key);
}

void LayeredPreferences::set(std::string_view key, PreferenceValue value) { stored_->set(key, std::move(value)); }

PreferencesLayer LayeredPreferences::layer(Overrides overrides) {
    return [overrides = std::move(overrides)](std::unique_ptr<Preferences> stored) {
        return std::make_unique<LayeredPreferences>(std::move(stored), overrides);
    };
}

}  // namespace tolvane
