#pragma once

#include "platform/Preferences.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The program's user defaults. The system writes them to disk itself and keeps their types.
class MacPreferences : public Preferences {
public:
    explicit MacPreferences(ObjC runtime);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    void set(std::string_view key, PreferenceValue value) override;

private:
    Id defaults() const;

    ObjC runtime_;
};

}  // namespace tolvane::machost
