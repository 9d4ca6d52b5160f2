#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// "Terminate when unused for 2h and using over 1.5 GB", or what the rule lacks. `locale` is an ICU identifier.
std::string summaryOf(const Rule& rule, std::string_view locale);

/// "1.5 GB" for 1536. A negative limit comes from a hand-written file.
std::string limitInWords(std::int64_t memoryMB, std::string_view locale);

}  // namespace tolvane
