#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Preferences.h"

namespace tolvane::linuxhost {

struct PropertyListDeleter {
    void operator()(void* node) const;
};

/// A node of the property-list library together with all below it.
using PropertyListNode = std::unique_ptr<void, PropertyListDeleter>;

/// One dictionary at the root of a property list. Any key or type of others is carried along.
class PropertyList {
public:
    /// An empty dictionary.
    PropertyList();
    /// None for text that is no property list in XML with a dictionary at its root.
    static std::optional<PropertyList> parse(std::string_view xml);
    /// The same for files of others, which may be in the binary form; none for large ones of these.
    static std::optional<PropertyList> parseAnyForm(std::string_view bytes);

    /// The values whose types are ours.
    std::map<std::string, PreferenceValue, std::less<>> values() const;
    /// False for what the format cannot hold: numbers that are not finite, dates outside the years 0 to 9999.
    bool set(const std::string& key, const PreferenceValue& value);
    std::string xml() const;

private:
    static std::optional<PropertyList> rootedIn(PropertyListNode root);
    explicit PropertyList(PropertyListNode root) : root_(std::move(root)) {}

    PropertyListNode root_;
};

}  // namespace tolvane::linuxhost
