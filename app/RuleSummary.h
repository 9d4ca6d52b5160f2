#pragma once

#include <string>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// "Terminate when unused for 2h and using over 1.5 GB", or what is missing. `locale` is an ICU identifier.
std::string summaryOf(const Rule& rule, std::string_view locale);

}  // namespace tolvane
