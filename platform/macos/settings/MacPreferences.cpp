#include "platform/macos/settings/MacPreferences.h"

#include <utility>

#include "platform/macos/objc/Foundation.h"
#include "platform/macos/settings/PreferenceObjects.h"

namespace tolvane::machost {

MacPreferences::MacPreferences(ObjC runtime) : runtime_(std::move(runtime)) {}

Id MacPreferences::defaults() const {
    return runtime_->send(runtime_->classNamed("NSUserDefaults"), "standardUserDefaults");
}

std::optional<PreferenceValue> MacPreferences::value(std::string_view key) const {
    const Pool pool(*runtime_);
    return preferenceOf(*runtime_, runtime_->send(defaults(), "objectForKey:", Foundation::string(*runtime_, key)));
}

void MacPreferences::set(std::string_view key, PreferenceValue value) {
    const Pool pool(*runtime_);
    runtime_->send<void>(defaults(), "setObject:forKey:", objectOf(*runtime_, value),
                         Foundation::string(*runtime_, key));
}

}  // namespace tolvane::machost
