#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// "1 core", "0.5 performance cores": percent of one core as a number of cores, with at most one fraction digit.
std::string cores(double percent, std::optional<std::string_view> kind, std::string_view locale);

}  // namespace tolvane
