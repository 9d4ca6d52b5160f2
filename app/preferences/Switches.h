#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/preferences/LayeredPreferences.h"

namespace tolvane {

/// What the command line says: preferences for this run, words that stand alone, and what made no sense.
struct Switches {
    LayeredPreferences::Overrides overrides;
    /// Words outside of a pair, in order: a file to open, or a mistake.
    std::vector<std::string> words;
    /// Switches with their dash that name no known key or have no value, in order.
    std::vector<std::string> unknown;
};

/// Reads `-key value` pairs, the program's own name left out. A value may begin with a dash only as a number does.
/// Of a repeated key the last holds. An unknown switch takes its value along.
Switches parseSwitches(const std::vector<std::string>& arguments, const std::set<std::string, std::less<>>& knownKeys);

/// Typed by what it looks like: YES, NO, true, false in any case are a bool, digits an integer, digits with a point a
/// double, each with a minus sign or none, and everything else is text. Digits beyond 64 bits are a double.
PreferenceValue typedValue(std::string_view text);

}  // namespace tolvane
