#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/Preferences.h"

namespace tolvane {

/// Reads stored preferences and keeps changes for this run only. Main thread.
class RunPreferences : public Preferences {
public:
    explicit RunPreferences(std::unique_ptr<Preferences> stored) : stored_(std::move(stored)) {}

    std::optional<PreferenceValue> value(std::string_view key) const override {
        const auto changed = changed_.find(key);
        return changed == changed_.end() ? stored_->value(key) : std::optional(changed->second);
    }
    void set(std::string_view key, PreferenceValue value) override {
        changed_.insert_or_assign(std::string(key), std::move(value));
    }

private:
    std::unique_ptr<Preferences> stored_;
    std::map<std::string, PreferenceValue, std::less<>> changed_;
};

}  // namespace tolvane
