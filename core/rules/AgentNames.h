#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/LowerCase.h"
#include "base/Paths.h"
#include "core/rules/World.h"

namespace tolvane {

/// Part of the path of an agent that installs each version in a folder named after its number.
inline constexpr std::string_view claudeVersionsFolder = "/claude/versions/";

inline bool runsScripts(std::string_view lowerCasedName) {
    return lowerCasedName == "node" || lowerCasedName == "bun" || lowerCasedName == "deno" ||
           lowerCasedName.starts_with("python");
}

/// The first argument that is not an option, past the program itself.
inline std::optional<std::string_view> scriptOf(const TextList& args) {
    for (std::size_t index = 1; index < args.size(); ++index) {
        if (!args[index].starts_with('-')) return args[index];
    }
    return std::nullopt;
}

/// Calls `visit` with each name by which the process can count as an agent, in lower case; names may repeat. `scratch`
/// is a buffer worth keeping between calls.
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

/// Whether the process goes by one of `Rule::defaultAgentNames`. `scratch` as above.
bool isAgent(const ProcSample& sample, std::string& scratch);

/// The names that a set of rules looks for. Each stands once, under a number.
class AgentNameSet {
public:
    /// Adds the names, ignoring blanks around them and their case, and returns their numbers in the same order. Empty
    /// names are skipped.
    std::vector<std::uint32_t> add(const std::vector<std::string>& names);
    /// `name` is in lower case.
    const std::uint32_t* find(std::string_view name) const;
    std::string_view name(std::uint32_t number) const { return names_[number]; }
    bool empty() const { return names_.empty(); }
    std::size_t size() const { return names_.size(); }

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::vector<std::string> names_;
    std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> numbers_;
};

/// A row that goes by one of the wanted names.
struct AgentMatch {
    /// Index in `World::rows`.
    std::uint32_t row = 0;
    std::uint32_t name = 0;
};

/// Listed workers by the process that hosts them. Of several workers on one process the last one counts.
using WorkersByHost = std::unordered_map<Pid, const ClaudeWorker*>;

WorkersByHost workersByHost(const World& world);

/// Every wanted name of every row, in row order. An application counts as an agent only when the roster lists it.
std::vector<AgentMatch> matchAgents(const World& world, const WorkersByHost& workers, const AgentNameSet& wanted);

}  // namespace tolvane
