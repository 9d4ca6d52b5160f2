#include "platform/linux/text/Environment.h"

#include <cstdlib>
#include <utility>

namespace tolvane::linuxhost {

Environment processEnvironment() {
    return [](const std::string& name) -> std::optional<std::string> {
        // This program never sets a variable.
        // NOLINTNEXTLINE(concurrency-mt-unsafe)
        const char* value = std::getenv(name.c_str());
        if (value == nullptr) return std::nullopt;
        return std::string(value);
    };
}

Environment environmentOf(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const std::string& name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        if (found == variables.end()) return std::nullopt;
        return found->second;
    };
}

}  // namespace tolvane::linuxhost
