#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/ModelState.h"

/// Turns the demo's machine into extreme worlds, for looking at screens and for tests that none of them breaks.
namespace tolvane::desktop::HostileWorld {

enum class Kind {
    /// Names, arguments and folders of 10,000 characters.
    endless,
    /// Right-to-left names, emoji, markup and control characters.
    foreign,
    /// 256 cores, terabytes, years, hundreds of ports.
    huge,
    /// Every size and load is zero.
    zero,
    /// One process, one moment.
    one,
    /// No process, no history, no rule.
    nothing
};

struct Named {
    Kind kind;
    std::string_view name;
};

inline constexpr std::array<Named, 6> kinds = {{{Kind::endless, "endless"},
                                                {Kind::foreign, "foreign"},
                                                {Kind::huge, "huge"},
                                                {Kind::zero, "zero"},
                                                {Kind::one, "one"},
                                                {Kind::nothing, "nothing"}}};

/// Maps a name to another one, always to the same.
using Change = std::function<std::string(std::string_view)>;

inline std::string repeated(std::string_view text, std::size_t length) {
    std::string all;
    while (all.size() < length) all += text;
    return all;
}

inline std::string endless(std::string_view name) {
    constexpr std::size_t length = 10'000;
    const auto bare = std::string(name.substr(name.rfind('/') + 1));
    // One name in three has no space to break at.
    switch (name.size() % 3) {
        case 0:
            return repeated(bare + " and so on, ", length);
        case 1:
            return repeated(bare, length);
        default:
            return repeated(bare + "-", length);
    }
}

inline std::string foreign(std::string_view name) {
    static constexpr std::array<std::string_view, 8> names = {
        "متصفح الويب السريع",           "שרת פיתוח", "🎉 party 👩‍💻",  "<b>not bold</b> &amp; <img src=x>",
        "tab\tnew\nline \x01 bell\x07", "Z̸̗͂a̶͉͐l̵̬̈́g̷̰͝o̸͎͊",     "开发服务器 – 很长的名字", "abc العربية 123 (v2)"};
    std::size_t sum = 0;
    for (const char each : name) sum = sum * 31 + static_cast<unsigned char>(each);
    return std::string(names[sum % names.size()]);
}

inline Text changed(const Text& text, const Change& change) { return text.empty() ? text : Text(change(text)); }

inline std::optional<Text> changed(const std::optional<Text>& text, const Change& change) {
    return text ? std::optional(changed(*text, change)) : std::nullopt;
}

/// Only the last component changes, so the path stays a path.
inline std::string folder(std::string_view path, const Change& change) {
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) return change(path);
    return std::string(path.substr(0, slash + 1)) + change(path.substr(slash + 1));
}

inline ProcRow renamed(ProcRow row, const Change& change) {
    auto& sample = row.sample;
    sample.name = changed(sample.name, change);
    std::vector<std::string> arguments = sample.args.strings();
    for (auto& each : arguments) each = change(each);
    sample.args = TextList(arguments);
    if (sample.cwd) sample.cwd = folder(*sample.cwd, change);
    if (row.project) row.project = folder(*row.project, change);
    if (row.appPath) row.appPath = folder(*row.appPath, change);
    row.claudeSession = changed(row.claudeSession, change);
    return row;
}

inline void renameProcesses(ModelState& state, const Change& change) {
    auto snapshot = *state.snapshot;
    for (auto& row : snapshot.rows) row = renamed(row, change);
    state.snapshot.set(std::move(snapshot));
    auto moments = *state.moments;
    for (auto& moment : moments) {
        for (auto& holder : moment.holders) holder.title = changed(holder.title, change);
    }
    state.moments.set(std::move(moments));
}

inline void renameProjects(ModelState& state, const Change& change) {
    std::map<std::string, ProjectBranch> branches;
    for (auto [root, branch] : *state.branches) {
        if (branch.state.branch) branch.state.branch = change(*branch.state.branch);
        branches.emplace(folder(root, change), branch);
    }
    state.branches.set(std::move(branches));
    auto parked = *state.parked;
    for (auto& project : parked) {
        project.root = folder(project.root, change);
        for (auto& command : project.commands) {
            for (auto& each : command.args) each = change(each);
        }
    }
    state.parked.set(std::move(parked));
}

inline void renameRules(ModelState& state, const Change& change) {
    auto rules = *state.rules;
    for (auto& rule : rules) {
        rule.name = change(rule.name);
        if (auto* app = std::get_if<AppTarget>(&rule.target)) app->name = change(app->name);
        if (auto* command = std::get_if<CommandTarget>(&rule.target)) {
            for (auto& each : command->patterns) each = change(each);
        }
    }
    state.rules.set(std::move(rules));
    auto activity = *state.activity;
    for (auto& entry : activity) {
        entry.ruleName = changed(entry.ruleName, change);
        entry.subject = changed(entry.subject, change);
    }
    state.activity.set(std::move(activity));
    auto suggestions = *state.suggestions;
    for (auto& each : suggestions) {
        each.title = change(each.title);
        each.evidence = change(each.evidence);
    }
    state.suggestions.set(std::move(suggestions));
}

inline void rename(ModelState& state, const Change& change) {
    renameProcesses(state, change);
    renameProjects(state, change);
    renameRules(state, change);
}

/// Multiplies every size by `factor` and every load by `load`.
inline void scaleProcesses(ModelState& state, std::uint64_t factor, double load) {
    auto snapshot = *state.snapshot;
    for (auto& row : snapshot.rows) {
        for (auto* size : {&row.sample.footprint, &row.sample.compressed, &row.sample.peakFootprint}) *size *= factor;
        row.cpuPercent *= load;
        row.perfPercent *= load;
    }
    auto& memory = snapshot.memory;
    for (auto* size :
         {&memory.total, &memory.app, &memory.wired, &memory.compressed, &memory.swapUsed, &memory.swapTotal}) {
        *size *= factor;
    }
    snapshot.cpu.user *= std::min(load, 1.0);
    snapshot.cpu.system *= std::min(load, 1.0);
    snapshot.cpu.performance *= load;
    snapshot.cpu.efficiency *= load;
    state.snapshot.set(std::move(snapshot));
    auto loads = *state.loadHistory;
    for (auto& point : loads) {
        point.performance *= load;
        point.efficiency *= load;
    }
    state.loadHistory.set(std::move(loads));
}

inline void scaleRecords(ModelState& state, std::uint64_t factor, double load) {
    auto moments = *state.moments;
    for (auto& moment : moments) {
        for (auto* size : {&moment.total, &moment.used, &moment.compressed, &moment.swapUsed}) *size *= factor;
        for (auto& holder : moment.holders) holder.memory *= factor;
        if (moment.performance) moment.performance = *moment.performance * load;
        if (moment.efficiency) moment.efficiency = *moment.efficiency * load;
    }
    state.moments.set(std::move(moments));
    auto activity = *state.activity;
    for (auto& entry : activity) {
        entry.memory *= factor;
        if (entry.freed) entry.freed = *entry.freed * factor;
    }
    state.activity.set(std::move(activity));
    auto suggestions = *state.suggestions;
    for (auto& each : suggestions) {
        each.memory *= factor;
        if (each.cpu) each.cpu = *each.cpu * load;
    }
    state.suggestions.set(std::move(suggestions));
}

inline void makeHuge(ModelState& state) {
    constexpr std::uint64_t factor = 4096;
    constexpr double load = 20;
    constexpr int cores = 256, ports = 300;
    scaleProcesses(state, factor, load);
    scaleRecords(state, factor, load);
    auto snapshot = *state.snapshot;
    snapshot.cpu.cores = cores;
    snapshot.cpu.efficiencyCores = cores / 4;
    for (auto& row : snapshot.rows) {
        row.unusedSince -= Seconds{3e8};
        row.sample.startTime -= Seconds{6e8};
    }
    state.snapshot.set(std::move(snapshot));
    state.swapGrowth.set(std::int64_t{1} << 46U);
    state.readBack.set(std::uint64_t{1} << 46U);
    auto all = *state.ports;
    for (auto& [pid, list] : all) {
        for (int port = 0; port < ports; ++port) list.push_back(30'000 + port);
    }
    state.ports.set(std::move(all));
}

inline void makeNothing(ModelState& state) {
    Snapshot empty;
    empty.date = state.snapshot->date;
    state.snapshot.set(std::move(empty));
    state.loadHistory.set({});
    state.moments.set({});
    state.rules.set({});
    state.activity.set({});
    state.suggestions.set({});
    state.parked.set({});
    state.containers.set({});
    state.branches.set({});
    state.ports.set({});
    state.selectedRows.set({});
}

inline void makeOne(ModelState& state) {
    auto snapshot = *state.snapshot;
    if (snapshot.rows.size() > 1) snapshot.rows.resize(1);
    state.snapshot.set(std::move(snapshot));
    auto moments = *state.moments;
    if (moments.size() > 1) moments.erase(moments.begin(), moments.end() - 1);
    state.moments.set(std::move(moments));
    state.loadHistory.set({});
    for (auto* list : {&state.activity}) {
        auto entries = list->get();
        if (entries.size() > 1) entries.resize(1);
        list->set(std::move(entries));
    }
    auto rules = *state.rules;
    if (rules.size() > 1) rules.resize(1);
    state.rules.set(std::move(rules));
}

/// Turns the state of a demo's model into one of these worlds.
inline void become(ModelState& state, Kind kind) {
    switch (kind) {
        case Kind::endless:
            return rename(state, endless);
        case Kind::foreign:
            return rename(state, foreign);
        case Kind::huge:
            return makeHuge(state);
        case Kind::zero:
            scaleProcesses(state, 0, 0);
            return scaleRecords(state, 0, 0);
        case Kind::one:
            return makeOne(state);
        case Kind::nothing:
            return makeNothing(state);
    }
}

}  // namespace tolvane::desktop::HostileWorld
