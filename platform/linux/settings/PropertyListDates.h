#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"

namespace tolvane::linuxhost {

/// A date as property lists write it, "2026-05-09T06:13:20Z", in whole seconds, rounded down. Returns nullopt outside
/// the years 0 to 9999.
std::optional<std::string> propertyListText(Date date);
/// Returns nullopt for any other form.
std::optional<Date> dateFromPropertyListText(std::string_view text);

}  // namespace tolvane::linuxhost
