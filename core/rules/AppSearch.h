#pragma once

#include <vector>

#include "core/rules/Ask.h"
#include "core/rules/World.h"

namespace tolvane {

/// Finds applications: all processes of one identifier are one subject, and the one in front is none. One pass over
/// the rows serves all asks; each asks for an `AppTarget`.
void findApps(const std::vector<Ask*>& asks, const World& world);

}  // namespace tolvane
