#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/acts/Acts.h"
#include "app/rows/Format.h"
#include "app/tasks/BackgroundCall.h"
#include "app/tools/Tools.h"
#include "base/Paths.h"
#include "base/files/Files.h"
#include "core/projects/Docker.h"
#include "core/projects/Projects.h"
#include "core/sampling/ProcessReader.h"

namespace tolvane {

namespace {

using Kind = Outcome::Kind;

std::string titleOf(const std::string& root) { return std::string(Paths::lastComponent(root)); }

std::vector<std::string> idsOf(const std::vector<Container>& containers) {
    std::vector<std::string> ids;
    ids.reserve(containers.size());
    for (const auto& container : containers) ids.push_back(container.id);
    return ids;
}

bool isSameLife(const ProcRow& a, const ProcRow& b) {
    return a.id() == b.id() && a.sample.startTime == b.sample.startTime;
}

/// The group may be as old as the dialog that asked about it: skip pids that belong to another process by now.
std::vector<Pid> pidsStillMeant(const ProjectGroup& group, const std::vector<ProcRow>& now) {
    std::vector<Pid> pids;
    for (const auto& row : group.rows) {
        const auto isIt = [&row](const ProcRow& each) { return isSameLife(row, each); };
        if (std::ranges::any_of(now, isIt)) pids.push_back(row.id());
    }
    return pids;
}

/// Empty when another process has taken the pid: its secrets are not the project's to keep.
std::vector<std::string> environmentOf(ProcessInspection& inspection, const ProcSample& sample) {
    const auto record = inspection.bsdRecord(sample.pid);
    if (!record || record->startTime != sample.startTime) return {};
    return ProcessReader::environment(inspection, sample.pid);
}

ParkedCommand commandOf(const ProcSample& sample, const std::string& root, ProcessInspection& inspection) {
    ParkedCommand command{.executable = sample.path.str()};
    for (const auto argument : sample.args) command.args.emplace_back(argument);
    command.env = environmentOf(inspection, sample);
    command.cwd = sample.cwd ? sample.cwd->str() : root;
    return command;
}

/// Only the roots of the project's process trees: each starts its children again.
std::vector<ParkedCommand> commandsOf(const ProjectGroup& group, const std::vector<ProcRow>& all,
                                      ProcessInspection& inspection) {
    std::vector<ParkedCommand> commands;
    for (const auto& row : Projects::tops(group.rows, all)) {
        commands.push_back(commandOf(row.sample, group.root, inspection));
    }
    return commands;
}

std::vector<ParkedProject> without(std::vector<ParkedProject> parked, std::string_view root) {
    std::erase_if(parked, [root](const ParkedProject& each) { return each.root == root; });
    return parked;
}

std::string nameOf(const ParkedCommand& command) {
    return command.args.empty() ? command.executable : command.args.front();
}

/// Starts the command in its folder with its environment, its output appended to `log`. A command that dies soon after
/// counts as started.
bool start(ProcessControl& control, const ParkedCommand& command, const std::string& log) {
    const auto started = control.start({.executable = command.executable,
                                        .args = command.args,
                                        .environment = command.env,
                                        .workingDirectory = command.cwd,
                                        .log = log});
    return started.has_value();
}

/// Returns the names of the commands that did not start.
std::vector<std::string> startAll(Host& host, const std::vector<ParkedCommand>& commands, const std::string& log) {
    Files::makeFolder(std::string(Paths::parent(log)));
    std::vector<std::string> failed;
    for (const auto& command : commands) {
        if (!start(*host.control, command, log)) failed.push_back(nameOf(command));
    }
    return failed;
}

}  // namespace

QCoro::Task<std::optional<bool>> Acts::performOnContainers(std::string verb, std::vector<std::string> ids) {
    if (ids.empty()) co_return true;
    auto perform = [&children = *host_.children, verb = std::move(verb), ids = std::move(ids)] {
        return Tools::performOnContainers(children, verb, ids);
    };
    co_return co_await BackgroundCall(background_.of(BackgroundJobs::Kind::containers), std::move(perform),
                                      tasks_.token());
}

QCoro::Task<Outcome> Acts::stop(ProjectGroup group) {
    const auto ids = idsOf(Docker::containersIn(state_.containers(), group.root));
    auto outcome = co_await terminate({.title = titleOf(group.root), .pids = pidsStillMeant(group, state_.rows())});
    if (outcome.kind == Kind::cancelled) co_return outcome;
    state_.resample();
    const auto performed = co_await performOnContainers("stop", ids);
    if (!performed) co_return Outcome::cancelled();
    auto left = state_.containers();
    std::erase_if(left, [&ids](const Container& each) { return std::ranges::find(ids, each.id) != ids.end(); });
    state_.setContainers(std::move(left));
    co_return outcome;
}

/// Records before it stops anything: an environment can only be read while its process lives.
QCoro::Task<Outcome> Acts::park(ProjectGroup group) {
    const auto inspection = host_.makeInspection();
    std::vector<ParkedProject> all = {{.root = group.root,
                                       .date = host_.clock->now(),
                                       .commands = commandsOf(group, state_.rows(), *inspection),
                                       .containers = idsOf(Docker::containersIn(state_.containers(), group.root))}};
    std::ranges::move(without(state_.parked(), group.root), std::back_inserter(all));
    state_.setParked(std::move(all));
    co_return co_await stop(std::move(group));
}

QCoro::Task<Outcome> Acts::startAgain(ParkedProject project) {
    const auto log = projectLog(project.root);
    const auto failed = startAll(host_, project.commands, log);
    const auto dockerStarted = co_await performOnContainers("start", project.containers);
    if (!dockerStarted) co_return Outcome::cancelled();
    state_.setParked(without(state_.parked(), project.root));
    state_.resample();
    const auto title = titleOf(project.root);
    if (!failed.empty()) {
        co_return Outcome::of(Kind::commandsNotStarted, title, {Format::list(failed, host_.locale), log});
    }
    co_return Outcome::of(*dockerStarted ? Kind::startedAgain : Kind::containersNotStarted, title);
}

std::string Acts::projectLog(const std::string& root) const {
    return host_.folders->home() + "/Library/Logs/Tolvane/" + titleOf(root) + ".log";
}

}  // namespace tolvane
