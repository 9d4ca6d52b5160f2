#pragma once

#include <optional>
#include <string_view>

namespace tolvane {

/// The outermost application folder that holds the executable; none outside of one. A part of `executable`.
std::optional<std::string_view> appBundlePath(std::string_view executable);

}  // namespace tolvane
