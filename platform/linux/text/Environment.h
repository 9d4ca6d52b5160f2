#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tolvane::linuxhost {

/// Looks a variable up; none when it is not set. Whoever needs the environment is handed one of these.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

/// The environment of this process, asked at each look-up.
Environment processEnvironment();
/// A fixed one.
Environment environmentOf(std::map<std::string, std::string> variables);

}  // namespace tolvane::linuxhost
