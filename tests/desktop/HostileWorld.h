#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"

/// What the demo's machine becomes when nothing is as its makers thought: for looking at screens, and for tests that
/// none of them breaks.
namespace tolvane::desktop::HostileWorld {

enum class Kind {
    /// Names, arguments and folders of 10,000 characters.
    endless,
    /// Names that read from right to left, of pictures, of markup, of control characters.
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

/// What one name becomes; the same name becomes the same again.
using Change = std::function<std::string(std::string_view)>;

inline std::string repeated(std::string_view text, std::size_t length) {
    std::string all;
    while (all.size() < length) all += text;
    return all;
}

inline std::string endless(std::string_view name) {
    constexpr std::size_t length = 10'000;
    const auto bare = std::string(name.substr(name.rfind('/') + 1));
    // A third has no blank to break at.
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

/// A folder keeps being one: only its last component changes.
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

inline void renameProcesses(AppModel& model, const Change& change) {
    auto snapshot = *model.snapshot;
    for (auto& row : snapshot.rows) row = renamed(row, change);
    model.snapshot.set(std::move(snapshot));
    auto moments = *model.moments;
    for (auto& moment : moments) {
        for (auto& holder : moment.holders) holder.title = changed(holder.title, change);
    }
    model.moments.set(std::move(moments));
}

inline void renameProjects(AppModel& model, const Change& change) {
    std::map<std::string, ProjectBranch> branches;
    for (auto [root, branch] : *model.branches) {
        if (branch.state.branch) branch.state.branch = change(*branch.state.branch);
        branches.emplace(folder(root, change), branch);
    }
    model.branches.set(std::move(branches));
    auto parked = *model.parked;
    for (auto& project : parked) {
        project.root = folder(project.root, change);
        for (auto& command : project.commands) {
            for (auto& each : command.args) each = change(each);
        }
    }
    model.parked.set(std::move(parked));
}

inline void renameRules(AppModel& model, const Change& change) {
    auto rules = *model.rules;
    for (auto& rule : rules) {
        rule.name = change(rule.name);
        if (auto* app = std::get_if<AppTarget>(&rule.target)) app->name = change(app->name);
        if (auto* command = std::get_if<CommandTarget>(&rule.target)) {
            for (auto& each : command->patterns) each = change(each);
        }
    }
    model.rules.set(std::move(rules));
    auto activity = *model.activity;
    for (auto& entry : activity) {
        entry.ruleName = changed(entry.ruleName, change);
        entry.subject = changed(entry.subject, change);
    }
    model.activity.set(std::move(activity));
    auto suggestions = *model.suggestions;
    for (auto& each : suggestions) {
        each.title = change(each.title);
        each.evidence = change(each.evidence);
    }
    model.suggestions.set(std::move(suggestions));
}

inline void rename(AppModel& model, const Change& change) {
    renameProcesses(model, change);
    renameProjects(model, change);
    renameRules(model, change);
}

/// Every size times `factor`, every load times `load`.
inline void scaleProcesses(AppModel& model, std::uint64_t factor, double load) {
    auto snapshot = *model.snapshot;
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
    model.snapshot.set(std::move(snapshot));
    auto loads = *model.loadHistory;
    for (auto& point : loads) {
        point.performance *= load;
        point.efficiency *= load;
    }
    model.loadHistory.set(std::move(loads));
}

inline void scaleRecords(AppModel& model, std::uint64_t factor, double load) {
    auto moments = *model.moments;
    for (auto& moment : moments) {
        for (auto* size : {&moment.total, &moment.used, &moment.compressed, &moment.swapUsed}) *size *= factor;
        for (auto& holder : moment.holders) holder.memory *= factor;
        if (moment.performance) moment.performance = *moment.performance * load;
        if (moment.efficiency) moment.efficiency = *moment.efficiency * load;
    }
    model.moments.set(std::move(moments));
    auto activity = *model.activity;
    for (auto& entry : activity) {
        entry.memory *= factor;
        if (entry.freed) entry.freed = *entry.freed * factor;
    }
    model.activity.set(std::move(activity));
    auto suggestions = *model.suggestions;
    for (auto& each : suggestions) {
        each.memory *= factor;
        if (each.cpu) each.cpu = *each.cpu * load;
    }
    model.suggestions.set(std::move(suggestions));
}

inline void makeHuge(AppModel& model) {
    constexpr std::uint64_t factor = 4096;
    constexpr double load = 20;
    constexpr int cores = 256, ports = 300;
    scaleProcesses(model, factor, load);
    scaleRecords(model, factor, load);
    auto snapshot = *model.snapshot;
    snapshot.cpu.cores = cores;
    snapshot.cpu.efficiencyCores = cores / 4;
    for (auto& row : snapshot.rows) {
        row.unusedSince -= Seconds{3e8};
        row.sample.startTime -= Seconds{6e8};
    }
    model.snapshot.set(std::move(snapshot));
    model.swapGrowth.set(std::int64_t{1} << 46U);
    model.readBack.set(std::uint64_t{1} << 46U);
    auto all = *model.ports;
    for (auto& [pid, list] : all) {
        for (int port = 0; port < ports; ++port) list.push_back(30'000 + port);
    }
    model.ports.set(std::move(all));
}

inline void makeNothing(AppModel& model) {
    Snapshot empty;
    empty.date = model.snapshot->date;
    model.snapshot.set(std::move(empty));
    model.loadHistory.set({});
    model.moments.set({});
    model.rules.set({});
    model.activity.set({});
    model.suggestions.set({});
    model.parked.set({});
    model.containers.set({});
    model.branches.set({});
    model.ports.set({});
    model.selectedRows.set({});
}

inline void makeOne(AppModel& model) {
    auto snapshot = *model.snapshot;
    if (snapshot.rows.size() > 1) snapshot.rows.resize(1);
    model.snapshot.set(std::move(snapshot));
    auto moments = *model.moments;
    if (moments.size() > 1) moments.erase(moments.begin(), moments.end() - 1);
    model.moments.set(std::move(moments));
    model.loadHistory.set({});
    for (auto* list : {&model.activity}) {
        auto entries = list->get();
        if (entries.size() > 1) entries.resize(1);
        list->set(std::move(entries));
    }
    auto rules = *model.rules;
    if (rules.size() > 1) rules.resize(1);
    model.rules.set(std::move(rules));
}

/// Turns the world of a model with a demo in it into one of these.
inline void become(AppModel& model, Kind kind) {
    switch (kind) {
        case Kind::endless:
            return rename(model, endless);
        case Kind::foreign:
            return rename(model, foreign);
        case Kind::huge:
            return makeHuge(model);
        case Kind::zero:
            scaleProcesses(model, 0, 0);
            return scaleRecords(model, 0, 0);
        case Kind::one:
            return makeOne(model);
        case Kind::nothing:
            return makeNothing(model);
    }
}

}  // namespace tolvane::desktop::HostileWorld
