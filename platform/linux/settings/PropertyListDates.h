#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"

namespace tolvane::linuxhost {

/// A date as property lists write it, "2026-05-09T06:13:20Z", in whole seconds rounded down. None outside the years 0
/// to 9999.
std::optional<std::string> propertyListText(Date date);
/// None for another form.
std::optional<Date> dateFromPropertyListText(std::string_view text);

}  // namespace tolvane::linuxhost
