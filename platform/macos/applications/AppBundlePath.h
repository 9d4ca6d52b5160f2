#pragma once

#include <optional>
#include <string_view>

namespace tolvane {

/// The outermost application folder around the executable, as a part of `executable`; nullopt outside application
/// folders.
std::optional<std::string_view> appBundlePath(std::string_view executable);

}  // namespace tolvane
