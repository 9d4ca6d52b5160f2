#include "core/advisor/Simulators.h"

#include "base/UUID.h"

namespace tolvane::Simulators {

namespace {

/// Precedes the device's identifier in paths such as
///
///     /Users/ada/Library/Developer/CoreSimulator/Devices/6F0E0C9A-…/data/var/run/launchd_bootstrap.plist
constexpr std::string_view devicesFolder = "/CoreSimulator/Devices/";

std::optional<std::string_view> deviceIn(std::string_view argument) {
    const auto found = argument.find(devicesFolder);
    if (found == std::string_view::npos) return std::nullopt;
    const auto rest = argument.substr(found + devicesFolder.size());
    return rest.substr(0, rest.find('/'));
}

}  // namespace

std::optional<std::string> device(const TextList& args) {
    for (const auto argument : args) {
        const auto named = deviceIn(argument);
        if (named && UUID::parse(*named)) return std::string(*named);
    }
    return std::nullopt;
}

std::optional<std::string> name(PropertyLists& lists, const std::string& home, std::string_view device) {
    const auto folder = home + "/Library/Developer" + std::string(devicesFolder) + std::string(device);
    return lists.text(folder + "/device.plist", "name");
}

}  // namespace tolvane::Simulators
