#include "platform/linux/settings/PropertyList.h"

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "platform/linux/settings/PropertyListDates.h"

namespace tolvane::linuxhost {

namespace {

/// The library recurses into nested nodes and overruns its stack somewhere above 100,000 levels; no honest file of
/// ours has 100.
constexpr std::size_t maximumContainers = 2'000;

struct Released {
    void operator()(char* text) const { std::free(text); }
};
using LibraryText = std::unique_ptr<char, Released>;

std::size_t occurrences(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (auto at = text.find(piece); at != std::string_view::npos; at = text.find(piece, at + piece.size())) ++count;
    return count;
}

bool isTooDeep(std::string_view xml) {
    return occurrences(xml, "<dict") + occurrences(xml, "<array") > maximumContainers;
}

PropertyListNode parsed(std::string_view xml) {
    plist_t node = nullptr;
    if (xml.size() > std::numeric_limits<std::uint32_t>::max() || isTooDeep(xml)) return nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
    return PropertyListNode(node);
}

/// A level of the binary form takes at least four bytes, so this size bounds the depth.
constexpr std::size_t maximumBinarySize = 64U << 10U;

PropertyListNode parsedBinary(std::string_view bytes) {
    plist_t node = nullptr;
    if (bytes.size() > maximumBinarySize) return nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return PropertyListNode(node);
}

std::string written(plist_t node) {
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &text, &length);
    const LibraryText owner(text);
    return text == nullptr ? std::string() : std::string(text, length);
}

/// The library's date calls are 32 bits wide and end in 2069; its text form holds every year. "For ever" is stored as
/// the year 4001.
std::optional<Date> dateOf(plist_t node) {
    constexpr std::string_view open = "<date>";
    const std::string xml = written(node);
    const auto from = xml.find(open);
    const auto to = xml.find("</date>");
    if (from == std::string::npos || to == std::string::npos) return std::nullopt;
    return dateFromPropertyListText(std::string_view(xml).substr(from + open.size(), to - from - open.size()));
}

plist_t nodeOf(Date date) {
    const auto text = propertyListText(date);
    return text ? parsed("<plist version=\"1.0\"><date>" + *text + "</date></plist>").release() : nullptr;
}

/// Calls `visit` with the key and the node of each entry.
template <typename Visit>
void forEachEntry(plist_t dictionary, Visit visit) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(dictionary, &position);
    const std::unique_ptr<void, decltype(&std::free)> owner(position, &std::free);
    for (;;) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(dictionary, position, &key, &node);
        const LibraryText keyOwner(key);
        if (key == nullptr || node == nullptr) return;
        visit(std::string(key), node);
    }
}

std::optional<PreferenceValue> datesOf(plist_t dictionary) {
    PreferenceDates dates;
    bool onlyDates = true;
    forEachEntry(dictionary, [&](const std::string& key, plist_t node) {
        const auto date = plist_get_node_type(node) == PLIST_DATE ? dateOf(node) : std::nullopt;
        onlyDates = onlyDates && date;
        if (date) dates.emplace(key, *date);
    });
    if (!onlyDates) return std::nullopt;
    return dates;
}

PreferenceValue boolOf(plist_t node) {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

PreferenceValue integerOf(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return static_cast<std::int64_t>(value);
}

PreferenceValue realOf(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
}

PreferenceValue stringOf(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, length);
}

std::optional<PreferenceValue> valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            return boolOf(node);
        case PLIST_UINT:
            return integerOf(node);
        case PLIST_REAL:
            return realOf(node);
        case PLIST_STRING:
            return stringOf(node);
        case PLIST_DATE:
            return dateOf(node);
        case PLIST_DICT:
            return datesOf(node);
        default:
            return std::nullopt;
    }
}

plist_t nodeOf(bool value) { return plist_new_bool(value ? 1 : 0); }
plist_t nodeOf(std::int64_t value) { return plist_new_uint(static_cast<std::uint64_t>(value)); }
plist_t nodeOf(double value) { return std::isfinite(value) ? plist_new_real(value) : nullptr; }
plist_t nodeOf(const std::string& value) { return plist_new_string(value.c_str()); }

plist_t nodeOf(const PreferenceDates& dates) {
    plist_t dictionary = plist_new_dict();
    for (const auto& [key, date] : dates) {
        if (plist_t node = nodeOf(date)) plist_dict_set_item(dictionary, key.c_str(), node);
    }
    return dictionary;
}

}  // namespace

void PropertyListDeleter::operator()(void* node) const { plist_free(node); }

PropertyList::PropertyList() : root_(plist_new_dict()) {}

std::optional<PropertyList> PropertyList::parse(std::string_view xml) { return rootedIn(parsed(xml)); }

std::optional<PropertyList> PropertyList::parseAnyForm(std::string_view bytes) {
    return rootedIn(bytes.starts_with("bplist") ? parsedBinary(bytes) : parsed(bytes));
}

std::optional<PropertyList> PropertyList::rootedIn(PropertyListNode root) {
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;
    return PropertyList(std::move(root));
}

std::map<std::string, PreferenceValue, std::less<>> PropertyList::values() const {
    std::map<std::string, PreferenceValue, std::less<>> values;
    forEachEntry(root_.get(), [&](const std::string& key, plist_t node) {
        if (auto value = valueOf(node)) values.emplace(key, std::move(*value));
    });
    return values;
}

bool PropertyList::set(const std::string& key, const PreferenceValue& value) {
    plist_t node = std::visit([](const auto& typed) { return nodeOf(typed); }, value);
    if (node == nullptr) return false;
    plist_dict_set_item(root_.get(), key.c_str(), node);
    return true;
}

std::string PropertyList::xml() const { return written(root_.get()); }

}  // namespace tolvane::linuxhost
