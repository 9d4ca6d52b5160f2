#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/preferences/LayeredPreferences.h"

namespace tolvane {

/// The command line: preferences for this run, separate words, and unknown switches.
struct Switches {
    LayeredPreferences::Overrides overrides;
    /// Words outside a pair, in order: files to open, or mistakes.
    std::vector<std::string> words;
    /// Switches without a known key or without a value, in order and with their dash.
    std::vector<std::string> unknown;
};

/// Reads `-key value` pairs; `arguments` leaves out the program's name. Only a number may start with a dash as a value.
/// The last value of a repeated key wins. An unknown switch consumes its value.
Switches parseSwitches(const std::vector<std::string>& arguments, const std::set<std::string, std::less<>>& knownKeys);

/// Infers the type from the text: YES, NO, true and false in any case are a bool, digits an integer, digits with a
/// point a double, both with an optional minus sign, and everything else is text. Digits beyond 64 bits are a double.
PreferenceValue typedValue(std::string_view text);

}  // namespace tolvane
