#pragma once

#include <vector>

#include "base/Date.h"
#include "core/advisor/Suggestion.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane::fakes {

/// A week of what rules did on the sample cast's machine, and the suggestions there.
struct SampleLog {
    std::vector<Rule> rules;
    /// Newest first.
    std::vector<ActivityEntry> activity;
    std::vector<Suggestion> suggestions;

    static SampleLog at(Date now);
    /// `count` entries, a minute apart.
    static std::vector<ActivityEntry> longLog(int count, Date now);
};

}  // namespace tolvane::fakes
