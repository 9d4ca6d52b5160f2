#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/Preferences.h"

namespace tolvane::linuxhost {

/// Preferences in one property list in XML, read once. Main thread.
/// A value that changes is written at once: the file is read again, so that keys of others and types that are not ours
/// stay, and replaced as a whole. What the disk did not take is tried again with the next change.
/// A file that is no property list gives the defaults and is kept beside, with ".damaged" at its name's end, before it
/// is written over.
/// Dates are stored in whole seconds, as the format has them, rounded down; within the run they stay exact.
class PlistPreferences : public Preferences {
public:
    explicit PlistPreferences(std::string path);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    void set(std::string_view key, PreferenceValue value) override;

private:
    void save();

    std::string path_;
    std::map<std::string, PreferenceValue, std::less<>> values_;
    /// Keys that this run set and no write has taken yet.
    std::set<std::string, std::less<>> unsaved_;
};

}  // namespace tolvane::linuxhost
