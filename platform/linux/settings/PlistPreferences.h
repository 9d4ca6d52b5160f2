#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/Preferences.h"

namespace tolvane::linuxhost {

/// Preferences in one property list in XML, read once. Main thread.
/// A change is written at once: the file is read again, so that foreign keys and types stay, and replaced as a whole.
/// A write that fails is tried again with the next change.
/// A file that is not a property list yields the defaults. It is kept as NAME.damaged before it is replaced; if that
/// fails, it is not replaced.
/// The format stores dates in whole seconds, rounded down; within the run they stay exact.
class PlistPreferences : public Preferences {
public:
    explicit PlistPreferences(std::string path);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    void set(std::string_view key, PreferenceValue value) override;

private:
    void save();

    std::string path_;
    std::map<std::string, PreferenceValue, std::less<>> values_;
    /// Keys that this run has set but not yet written.
    std::set<std::string, std::less<>> unsaved_;
};

}  // namespace tolvane::linuxhost
