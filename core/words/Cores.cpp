#include "core/words/Cores.h"

#include "core/words/Words.h"

namespace tolvane {

std::string cores(double percent, std::optional<std::string_view> kind, std::string_view locale) {
    const auto number = Words::decimal(percent / 100, 0, 1, locale);
    const auto unit = kind ? std::string(*kind) + " core" : std::string("core");
    return number + " " + unit + (number == "1" ? "" : "s");
}

}  // namespace tolvane
