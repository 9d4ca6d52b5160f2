#include "app/screens/projects/ProjectsView.h"

#include <QCoroTask>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <set>
#include <utility>

#include "app/acts/Acts.h"
#include "app/rows/Format.h"
#include "app/tasks/Sleep.h"
#include "base/Paths.h"
#include "core/projects/Docker.h"
#include "core/projects/Projects.h"
#include "core/words/DateWords.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

constexpr Seconds refreshInterval{15.0};
/// Percent of one core; a project below it is shown as idle.
constexpr double leastBusy = 10.0;
/// The number of words of a command that the question shows.
constexpr std::size_t wordsOfCommand = 3;

std::string nameOf(std::string_view root) { return std::string(Paths::lastComponent(root)); }

std::string counted(std::size_t count, std::string_view noun, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? noun : plural);
}

std::string processes(std::size_t count) { return counted(count, "process", "processes"); }

std::string containersText(std::size_t count) { return counted(count, "container", "containers"); }

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) text.append(text.empty() ? "" : " ").append(word);
    return text;
}

std::string beginningOf(const ProcSample& sample) {
    std::vector<std::string> words;
    for (const auto argument : sample.args) {
        if (words.size() < wordsOfCommand) words.emplace_back(argument);
    }
    return joined(words);
}

std::string commandLine(const ParkedCommand& command) {
    return command.args.empty() ? command.executable : joined(command.args);
}

std::set<int> portsOf(const ProjectGroup& group, const std::map<Pid, std::vector<int>>& ports) {
    std::set<int> all;
    for (const auto& row : group.rows) {
        const auto found = ports.find(row.id());
        if (found != ports.end()) all.insert(found->second.begin(), found->second.end());
    }
    return all;
}

std::string portsText(const std::set<int>& ports, std::string_view locale) {
    std::vector<std::string> texts;
    for (const int port : ports) texts.push_back(std::to_string(port));
    return (ports.size() == 1 ? "port " : "ports ") + Format::list(texts, locale);
}

/// A free function, because the view may be destroyed while the facts are read.
QCoro::Task<> keepFresh(AppModel& model, std::shared_ptr<bool> reading, std::stop_token cancellation) {
    auto& clock = model.clock();
    while (!cancellation.stop_requested()) {
        // A refresh that still hangs from an earlier visit must not be joined by a second.
        if (!std::exchange(*reading, true)) {
            co_await model.refreshProjects();
            *reading = false;
        }
        if (cancellation.stop_requested()) co_return;
        co_await Sleep(clock, refreshInterval, Seconds{0}, cancellation);
    }
}

}  // namespace

std::string ProjectRow::details(const ProjectGroup& group, const std::map<Pid, std::vector<int>>& ports,
                                const std::vector<Container>& containers, std::string_view locale) {
    auto text = processes(group.rows.size());
    if (const auto count = Docker::containersIn(containers, group.root).size(); count > 0) {
        text += ", " + containersText(count);
    }
    if (const auto all = portsOf(group, ports); !all.empty()) text += ", " + portsText(all, locale);
    return text;
}

std::optional<ProjectMark> ProjectRow::markOf(const ProjectBranch& branch) {
    if (branch.state.deleted) {
        return ProjectMark{.icon = "exclamationmark.triangle", .text = "Branch deleted, safe to stop"};
    }
    if (branch.remoteGone) {
        return ProjectMark{.icon = "arrow.triangle.merge", .text = "Remote branch gone, probably merged"};
    }
    return std::nullopt;
}

std::array<ProjectFigure, 3> ProjectRow::figuresOf(const ProjectGroup& group, Date now, std::string_view locale) {
    std::uint64_t memory = 0;
    double cpu = 0;
    Date unusedSince = distantPast;
    for (const auto& row : group.rows) {
        memory += row.sample.footprint;
        cpu += row.cpuPercent;
        unusedSince = std::max(unusedSince, row.unusedSince);
    }
    return {{{.title = "Memory", .value = Format::bytes(memory, locale)},
             {.title = "CPU", .value = cpu >= leastBusy ? Words::cores(cpu, std::nullopt, locale) : "Idle"},
             {.title = "Unused", .value = Format::duration(unusedSince, now)}}};
}

ProjectsView::ProjectsView(AppModel& model, std::string locale, std::string zone)
    : model_(model), locale_(std::move(locale)), zone_(std::move(zone)) {}

ProjectsContent ProjectsView::content() const {
    auto groups = Projects::groups(model_.world(), *model_.servicePIDs);
    ProjectsContent content{.subtitle = subtitle(groups.size()), .runningFooter = runningFooter(groups)};
    for (auto& group : groups) content.running.push_back(rowOf(std::move(group)));
    for (const auto& project : *model_.parked) content.parked.push_back(rowOf(project));
    return content;
}

ProjectRow ProjectsView::rowOf(ProjectGroup group) const {
    const auto known = model_.branches->find(group.root);
    const auto branch = known == model_.branches->end() ? ProjectBranch{} : known->second;
    ProjectRow row{.title = nameOf(group.root),
                   .branch = branch.state.branch.value_or(""),
                   .mark = ProjectRow::markOf(branch),
                   .detail = ProjectRow::details(group, *model_.ports, *model_.containers, locale_),
                   .figures = ProjectRow::figuresOf(group, model_.snapshot->date, locale_),
                   .isEnding = ending_->contains(group.root)};
    row.project = std::move(group);
    return row;
}

ParkedRow ProjectsView::rowOf(const ParkedProject& project) const {
    std::error_code ignored;
    ParkedRow row{.project = project,
                  .title = nameOf(project.root),
                  .when = "Parked " + DateWords::relative(project.date, model_.now(), locale_, zone_),
                  .hasLog = std::filesystem::exists(model_.acts().projectLog(project.root), ignored)};
    std::ranges::transform(project.commands, std::back_inserter(row.commands), commandLine);
    if (!project.containers.empty()) row.containers = containersText(project.containers.size());
    return row;
}

void ProjectsView::enter() {
    standing_.renew();
    static_cast<void>(keepFresh(model_, reading_, standing_.token()));
}

void ProjectsView::askStop(ProjectGroup project) {
    confirmPark_.reset();
    confirmStop_ = std::move(project);
}

void ProjectsView::askPark(ProjectGroup project) {
    confirmStop_.reset();
    confirmPark_ = std::move(project);
}

std::optional<Question> ProjectsView::stopQuestion() const {
    if (!confirmStop_) return std::nullopt;
    return Question{.title = "Stop everything in " + nameOf(confirmStop_->root) + "?",
                    .message =
                        "Unsaved work in these processes will be lost. Park instead remembers how to start them "
                        "again.",
                    .action = std::string(stopLabel)};
}

std::optional<Question> ProjectsView::parkQuestion() const {
    if (!confirmPark_) return std::nullopt;
    return Question{.title = "Park " + nameOf(confirmPark_->root) + "?",
                    .message = parkMessage(*confirmPark_, model_.snapshot->rows, *model_.containers, locale_),
                    .action = std::string(parkLabel)};
}

void ProjectsView::cancel() {
    confirmStop_.reset();
    confirmPark_.reset();
}

void ProjectsView::confirm() {
    const auto stopped = std::exchange(confirmStop_, std::nullopt);
    const auto parked = std::exchange(confirmPark_, std::nullopt);
    if (stopped) static_cast<void>(end(&model_, *stopped, false, ending_));
    if (parked) static_cast<void>(end(&model_, *parked, true, ending_));
}

/// The next sample shows the result; it may come before or after this function ends.
QCoro::Task<void> ProjectsView::end(AppModel* model, ProjectGroup group, bool parks, std::shared_ptr<Roots> ending) {
    const auto root = group.root;
    ending->insert(root);
    if (parks) {
        co_await model->acts().park(std::move(group));
    } else {
        co_await model->acts().stop(std::move(group));
    }
    ending->erase(root);
}

void ProjectsView::startAgain(const ParkedProject& project) { static_cast<void>(model_.startAgain(project)); }

void ProjectsView::forget(const ParkedProject& project) { model_.forgetParked(project.root); }

void ProjectsView::showLog(const ParkedProject& project) {
    model_.desktop().open(model_.acts().projectLog(project.root));
}

void ProjectsView::showFolder(const ProjectGroup& project) { model_.desktop().open(project.root); }

std::string ProjectsView::subtitle(std::size_t projects) {
    return counted(projects, "project running", "projects running");
}

std::string ProjectsView::runningFooter(const std::vector<ProjectGroup>& groups) {
    const int leftAlone = std::accumulate(groups.begin(), groups.end(), 0,
                                          [](int sum, const ProjectGroup& group) { return sum + group.leftAlone; });
    if (leftAlone < 1) return {};
    return processes(static_cast<std::size_t>(leftAlone)) + " from AI agents, Claude sessions or launchd agents " +
           (leftAlone > 1 ? "are" : "is") + " left out, so Stop and Park never touch them.";
}

std::string ProjectsView::parkMessage(const ProjectGroup& group, const std::vector<ProcRow>& all,
                                      const std::vector<Container>& containers, std::string_view locale) {
    const auto count = Docker::containersIn(containers, group.root).size();
    std::vector<std::string> commands;
    for (const auto& row : Projects::tops(group.rows, all)) commands.push_back(beginningOf(row.sample));
    return "Stops " + processes(group.rows.size()) + (count > 0 ? " and " + containersText(count) : "") +
           ". Start Again runs " + Format::list(commands, locale) + " in the same folder with the same environment.";
}

}  // namespace tolvane
