#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "platform/PropertyLists.h"

/// The simulated devices that developer tools boot. Callable from any thread.
namespace tolvane::Simulators {

/// The application that shows the devices.
inline constexpr std::string_view appID = "com.apple.iphonesimulator";
/// The process under which all of a device's own processes run.
inline constexpr std::string_view processName = "launchd_sim";

/// The identifier of the device whose folder the arguments name, spelled as in the path; nullopt when they name none.
std::optional<std::string> device(const TextList& args);

/// The user's name for the device, read from its folder below `home`; nullopt when it cannot be read.
std::optional<std::string> name(PropertyLists& lists, const std::string& home, std::string_view device);

}  // namespace tolvane::Simulators
