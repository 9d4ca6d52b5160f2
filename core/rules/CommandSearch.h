#pragma once

#include <vector>

#include "core/rules/Ask.h"
#include "core/rules/World.h"

namespace tolvane {

/// Finds processes by their command lines; each is a subject of its own. Programs of the system and of the application
/// in front are passed over. One pass over the rows serves all asks, and a command line is put together at most once,
/// only for a row that fits some ask in all else. Each asks for a `CommandTarget`.
void findCommands(const std::vector<Ask*>& asks, const World& world);

}  // namespace tolvane
