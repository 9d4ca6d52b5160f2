#include "core/projects/ToolOutput.h"

#include "base/UTF8.h"

namespace tolvane {

std::optional<std::string> toolOutput(ChildProcesses& children, const std::string& path,
                                      const std::vector<std::string>& arguments) {
    auto printed = children.run(path, arguments);
    if (printed && !UTF8::isValid(*printed)) *printed = UTF8::repaired(*printed);
    return printed;
}

}  // namespace tolvane
