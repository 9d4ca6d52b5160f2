#pragma once

#include <vector>

#include "core/rules/Rule.h"
#include "core/sampling/ProcRow.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane::fakes {

/// A developer's rules, and rows that some of them match.
struct SampleRules {
    std::vector<Rule> rules;
    std::vector<ProcRow> rows;

    /// `rows` are those of the sample cast.
    static SampleRules on(std::vector<ProcRow> rows, FakeWorld& world);
};

}  // namespace tolvane::fakes
