#pragma once

#include <string_view>
#include <vector>

#include "core/projects/Container.h"

/// Containers as the client of the container engine tells of them.
namespace tolvane::Docker {

/// Reads the lines that the client prints for `ps --format '{{json .}}'`, one object each. A line that is damaged
/// costs only itself. A compose folder that holds a comma is cut there: the client joins all labels by commas.
std::vector<Container> parse(std::string_view text);

/// Those whose compose project lies in the folder or below it, in order.
std::vector<Container> containersIn(const std::vector<Container>& all, std::string_view root);

}  // namespace tolvane::Docker
