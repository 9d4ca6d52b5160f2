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

/// Owns a node of the property-list library and everything below it.
using PropertyListNode = std::unique_ptr<void, PropertyListDeleter>;

/// The root dictionary of a property list. Keeps foreign keys and types.
class PropertyList {
public:
    /// An empty dictionary.
    PropertyList();
    /// Returns nullopt unless the text is an XML property list with a dictionary at its root.
    static std::optional<PropertyList> parse(std::string_view xml);
    /// The same for files of other programs, which may be binary; nullopt for large binary ones.
    static std::optional<PropertyList> parseAnyForm(std::string_view bytes);

    /// The values of the types that preferences use.
    std::map<std::string, PreferenceValue, std::less<>> values() const;
    /// Returns false for what the format cannot hold: non-finite numbers and dates outside the years 0 to 9999.
    bool set(const std::string& key, const PreferenceValue& value);
    std::string xml() const;

private:
    static std::optional<PropertyList> rootedIn(PropertyListNode root);
    explicit PropertyList(PropertyListNode root) : root_(std::move(root)) {}

    PropertyListNode root_;
};

}  // namespace tolvane::linuxhost
