#include "core/rules/AgentNames.h"

#include <algorithm>

#include "core/rules/Rule.h"

namespace tolvane {

namespace {

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

}  // namespace

bool isAgent(const ProcSample& sample, std::string& scratch) {
    bool found = false;
    eachAgentName(sample, scratch, [&](std::string_view name) {
        found = found || std::ranges::find(Rule::defaultAgentNames, name) != Rule::defaultAgentNames.end();
    });
    return found;
}

std::vector<std::uint32_t> AgentNameSet::add(const std::vector<std::string>& names) {
    std::vector<std::uint32_t> numbers;
    for (const auto& name : names) {
        auto wanted = lowerCased(withoutBlanks(name));
        if (wanted.empty()) continue;
        const auto [known, isNew] = numbers_.try_emplace(wanted, static_cast<std::uint32_t>(names_.size()));
        if (isNew) names_.push_back(std::move(wanted));
        numbers.push_back(known->second);
    }
    return numbers;
}

const std::uint32_t* AgentNameSet::find(std::string_view name) const {
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? nullptr : &found->second;
}

WorkersByHost workersByHost(const World& world) {
    WorkersByHost workers;
    for (const auto& worker : world.claudeWorkers) workers[worker.hostPID] = &worker;
    return workers;
}

std::vector<AgentMatch> matchAgents(const World& world, const WorkersByHost& workers, const AgentNameSet& wanted) {
    std::vector<AgentMatch> matches;
    std::string scratch;
    for (std::uint32_t index = 0; index < world.rows.size(); ++index) {
        const auto& row = world.rows[index];
        if (row.appPath && !workers.contains(row.sample.pid)) continue;
        eachAgentName(row.sample, scratch, [&](std::string_view name) {
            if (const auto* number = wanted.find(name)) matches.push_back({index, *number});
        });
    }
    return matches;
}

}  // namespace tolvane
