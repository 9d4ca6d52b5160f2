#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "platform/PropertyLists.h"

/// The simulated devices that a developer's tools boot. Any thread.
namespace tolvane::Simulators {

/// The application that shows them.
inline constexpr std::string_view appID = "com.apple.iphonesimulator";
/// The process below which all of a device's own run.
inline constexpr std::string_view processName = "launchd_sim";

/// The identifier of the device whose folder the arguments name, as it stands there; none without one.
std::optional<std::string> device(const TextList& args);

/// What the user calls the device, from what is kept of it below `home`; none when that cannot be read.
std::optional<std::string> name(PropertyLists& lists, const std::string& home, std::string_view device);

}  // namespace tolvane::Simulators
