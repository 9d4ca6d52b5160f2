#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tolvane::linuxhost {

/// Looks a variable up; nullopt when it is not set. Code that needs the environment gets one of these.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

/// The environment of this process, read at each lookup.
Environment processEnvironment();
/// A fixed one.
Environment environmentOf(std::map<std::string, std::string> variables);

}  // namespace tolvane::linuxhost
