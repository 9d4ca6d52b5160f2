#include "platform/linux/settings/LinuxPropertyLists.h"

#include "base/files/Files.h"
#include "platform/linux/settings/PropertyList.h"

namespace tolvane::linuxhost {

namespace {

/// Other programs keep a few kilobytes in such files.
constexpr std::size_t maximumFileSize = 1U << 20U;

}  // namespace

std::optional<std::string> LinuxPropertyLists::text(const std::string& path, std::string_view key) {
    const auto bytes = Files::readUpTo(path, maximumFileSize);
    const auto list = bytes ? PropertyList::parseAnyForm(*bytes) : std::nullopt;
    if (!list) return std::nullopt;
    const auto values = list->values();
    const auto found = values.find(key);
    if (found == values.end()) return std::nullopt;
    const auto* text = std::get_if<std::string>(&found->second);
    return text ? std::optional(*text) : std::nullopt;
}

}  // namespace tolvane::linuxhost
