#include <QCoroTask>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/model/AppModelPrivate.h"
#include "app/tasks/BackgroundCall.h"
#include "app/tools/Tools.h"
#include "core/projects/GitBranch.h"
#include "core/projects/Projects.h"
#include "core/sampling/ProcessReader.h"

namespace tolvane {

namespace {

struct ProjectFacts {
    std::vector<Container> containers;
    std::map<std::string, ProjectBranch> branches;
    std::map<Pid, std::vector<int>> ports;
};

/// What to read, and with which interfaces. Runs off the main thread.
struct FactsReader {
    ChildProcesses& children;
    std::shared_ptr<ProcessInspection> inspection;
    std::vector<std::string> roots;
    std::vector<Pid> pids;

    ProjectFacts operator()() const {
        ProjectFacts facts{.containers = Tools::runningContainers(children)};
        for (const auto& root : roots) facts.branches.emplace(root, branchOf(root));
        facts.ports = ProcessReader::listeningPorts(*inspection, pids);
        return facts;
    }

private:
    ProjectBranch branchOf(const std::string& root) const {
        ProjectBranch branch{.state = GitBranch::read(root)};
        branch.remoteGone =
            branch.state.branch && !branch.state.deleted && Tools::remoteGone(children, root, *branch.state.branch);
        return branch;
    }
};

FactsReader factsReader(Host& host, const std::vector<ProjectGroup>& groups) {
    FactsReader reader{.children = *host.children, .inspection = host.makeInspection()};
    for (const auto& group : groups) {
        reader.roots.push_back(group.root);
        for (const auto& row : group.rows) reader.pids.push_back(row.id());
    }
    return reader;
}

}  // namespace

QCoro::Task<> AppModel::refreshProjects() {
    if (demo()) co_return;
    const auto cancellation = d_->tasks.token();
    auto ask = [&services = *host().services] { return services.managedPIDs(); };
    auto managed =
        co_await BackgroundCall(d_->background.of(BackgroundJobs::Kind::services), std::move(ask), cancellation);
    if (!managed) co_return;
    state_->servicePIDs.set(std::move(*managed));
    state_->servicesChecked.set(host().clock->now());
    auto read = factsReader(host(), Projects::groups(world(), *servicePIDs));
    auto facts =
        co_await BackgroundCall(d_->background.of(BackgroundJobs::Kind::projectFacts), std::move(read), cancellation);
    if (!facts) co_return;
    state_->containers.set(std::move(facts->containers));
    state_->branches.set(std::move(facts->branches));
    state_->ports.set(std::move(facts->ports));
}

QCoro::Task<> AppModel::startAgain(ParkedProject project) {
    const auto outcome = co_await d_->acts.startAgain(std::move(project));
    if (outcome.failed) notify(outcome.title, outcome.explanation(), std::nullopt);
}

}  // namespace tolvane
