#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/sampling/ProcessHistory.h"
#include "app/sampling/Snapshot.h"
#include "core/advisor/Advisor.h"
#include "core/history/Moment.h"
#include "core/projects/Docker.h"
#include "core/projects/GitBranch.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"

/// An invented developer's machine in the middle of a working day, so that every screen has something to show without
/// a real process. Pure: the same date and place give the same world.
namespace tolvane::Demo {

/// The user of the machine.
struct Place {
    /// Absolute, without a trailing slash.
    std::string home;
    std::uint32_t uid = 501;
};

/// Folders of the projects, and the agent's program.
struct Roots {
    std::string atlas;
    std::string billing;
    std::string mobile;
    std::string docs;
    std::string claude;

    static Roots in(const Place& place);
};

/// One process of the cast.
struct Proc {
    Pid pid = 0;
    Pid ppid = 1;
    std::string name;
    std::string path;
    std::vector<std::string> args;
    std::optional<std::string> cwd;
    /// Footprint and the compressed part of it, in MiB.
    double mb = 0;
    double compressedMB = 0;
    /// Percent of one core.
    double cpu = 0;
    double unusedMinutes = 0;
    double startedHours = 1;
    /// The application that the process belongs to.
    std::optional<std::string> appPath;
    std::optional<std::string> appID;
    std::optional<std::string> project;
    /// The agent session that the process belongs to.
    std::optional<std::string> session;
    std::uint32_t uid = 501;
    /// The multiple of `mb` that it held that many minutes ago; 0 before it existed.
    std::function<double(double minutesAgo)> shape = [](double) { return 1.0; };
};

/// Everything that the model shows in a demo.
struct State {
    Snapshot snapshot;
    ProcessHistory history;
    std::vector<LoadPoint> loadHistory;
    std::vector<Moment> moments;
    std::vector<Rule> rules;
    std::vector<ActivityEntry> activity;
    std::vector<ParkedProject> parked;
    std::vector<Container> containers;
    std::map<std::string, ProjectBranch> branches;
    std::map<Pid, std::vector<int>> ports;
    std::int64_t swapGrowth = 0;
    std::set<std::string> selectedRows;

    bool operator==(const State&) const = default;
};

State state(Date now, const Place& place);

/// An advisor in the state that six hours of watching would have left it in.
Advisor advisor(Date now, const Place& place);
/// The name of the one simulated device.
std::optional<std::string> simulatorName(std::string_view device);

// The parts of a state.

std::vector<Proc> processes(const Place& place);
ProcRow row(const Proc& proc, Date now);
/// The noise of a value that many minutes ago, between -1 and 1.
double wobble(double minutesAgo, double phase);
ProcessHistory history(const std::vector<Proc>& procs, Date now);
std::vector<LoadPoint> loadHistory(Date now);
SystemMemory memory();
/// One a minute, the last day, oldest first.
std::vector<Moment> moments(const std::vector<Proc>& procs, Date now);
std::vector<Rule> rules();
std::vector<ActivityEntry> activity(Date now);
std::vector<ParkedProject> parked(Date now, const Place& place);
std::vector<Container> containers(const Place& place);
std::map<std::string, ProjectBranch> branches(const Place& place);
std::map<Pid, std::vector<int>> ports();

}  // namespace tolvane::Demo
