#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/Preferences.h"

namespace tolvane {

/// Stored preferences below overrides for this run. An override holds for the whole run: setting its key writes the
/// stored value, which takes effect when the program starts without the override. Main thread.
class LayeredPreferences : public Preferences {
public:
    using Overrides = std::map<std::string, PreferenceValue, std::less<>>;

    LayeredPreferences(std::unique_ptr<Preferences> stored, Overrides overrides);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    void set(std::string_view key, PreferenceValue value) override;

    /// For building a host.
    static PreferencesLayer layer(Overrides overrides);

private:
    std::unique_ptr<Preferences> stored_;
    Overrides overrides_;
};

}  // namespace tolvane
