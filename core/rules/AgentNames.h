#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/LowerCase.h"
#include "base/Paths.h"
#include "core/sampling/ProcSample.h"

namespace tolvane {

/// Part of the path of an agent that installs each of its versions under a number.
inline constexpr std::string_view claudeVersionsFolder = "/claude/versions/";

inline bool runsScripts(std::string_view lowerCasedName) {
    return lowerCasedName == "node" || lowerCasedName == "bun" || lowerCasedName == "deno" ||
           lowerCasedName.starts_with("python");
}

/// The first argument after the program's own that is no option.
inline std::optional<std::string_view> scriptOf(const TextList& args) {
    for (std::size_t index = 1; index < args.size(); ++index) {
        if (!args[index].starts_with('-')) return args[index];
    }
    return std::nullopt;
}

/// Calls `visit` with each name under which the process can count as an agent, in lower case; names may repeat.
/// `scratch` is working space that is worth keeping between calls.
template <typename Visit>
void eachAgentName(const ProcSample& sample, std::string& scratch, const Visit& visit) {
    const auto visitLowerCased = [&](std::string_view name) {
        scratch.clear();
        appendLowerCased(scratch, name);
        visit(std::string_view(scratch));
    };
    visitLowerCased(sample.name);
    const bool interprets = sample.args.size() >= 2 && runsScripts(scratch);
    if (sample.path.view().find(claudeVersionsFolder) != std::string_view::npos) visit(std::string_view("claude"));
    if (!sample.args.empty()) visitLowerCased(Paths::lastComponent(sample.args[0]));
    if (!interprets) return;
    if (const auto script = scriptOf(sample.args)) {
        visitLowerCased(Paths::withoutExtension(Paths::lastComponent(*script)));
    }
}

}  // namespace tolvane
