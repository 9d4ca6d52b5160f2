#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/rules/World.h"

namespace tolvane {

/// The names that some rules look for, each once, with a number.
class AgentNameSet {
public:
    /// Blanks around a name and its case do not count; an empty one is passed over. The numbers, in the names' order.
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

/// A row that goes by a wanted name.
struct AgentMatch {
    /// Position in the world.
    std::uint32_t row = 0;
    std::uint32_t name = 0;
};

/// Workers of the roster by the process that hosts them; of several on one the last.
using WorkersByHost = std::unordered_map<Pid, const ClaudeWorker*>;

WorkersByHost workersByHost(const World& world);

/// Every wanted name of every row, in row order. Rows of applications are no agents unless the roster lists them.
std::vector<AgentMatch> matchAgents(const World& world, const WorkersByHost& workers, const AgentNameSet& wanted);

}  // namespace tolvane
