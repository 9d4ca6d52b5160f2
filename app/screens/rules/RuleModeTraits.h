#pragma once

#include <array>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

struct RuleModeTraits {
    RuleMode mode;
    std::string_view title;
    /// The text under the picker.
    std::string_view explanation;
};

/// In the order of the picker.
inline constexpr std::array<RuleModeTraits, 3> ruleModes = {{
    {RuleMode::off, "Off", "The rule does nothing."},
    {RuleMode::logOnly, "Log Only", "Writes what the rule would do to Activity without doing it."},
    {RuleMode::on, "On", "Acts on every match that meets the conditions, at most once every 10 minutes per match."},
}};

constexpr const RuleModeTraits& traits(RuleMode mode) { return ruleModes[static_cast<std::size_t>(mode)]; }

}  // namespace tolvane
