#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/EmptyText.h"
#include "app/screens/Question.h"
#include "app/tasks/CancelSource.h"

namespace tolvane {

/// Marks a project that can go: an icon and a text, both in orange.
struct ProjectMark {
    std::string_view icon;
    std::string_view text;

    bool operator==(const ProjectMark&) const = default;
};

/// A value with its title above.
struct ProjectFigure {
    std::string_view title;
    std::string value;

    bool operator==(const ProjectFigure&) const = default;
};

/// One running project.
struct ProjectRow {
    /// The project that the controls of the row act on.
    ProjectGroup project;
    std::string title;
    /// Empty when the project has none.
    std::string branch;
    std::optional<ProjectMark> mark;
    std::string detail;
    std::array<ProjectFigure, 3> figures;
    /// The project was asked to stop and has not stopped yet.
    bool isEnding = false;

    bool operator==(const ProjectRow&) const = default;

    /// "3 processes, 2 containers, ports 3000 and 6379"
    static std::string details(const ProjectGroup& group, const std::map<Pid, std::vector<int>>& ports,
                               const std::vector<Container>& containers, std::string_view locale);
    /// The first mark that applies.
    static std::optional<ProjectMark> markOf(const ProjectBranch& branch);
    static std::array<ProjectFigure, 3> figuresOf(const ProjectGroup& group, Date now, std::string_view locale);
};

/// One parked project.
struct ParkedRow {
    /// The project that the controls of the row act on.
    ParkedProject project;
    std::string title;
    /// "Parked yesterday"
    std::string when;
    std::vector<std::string> commands;
    /// Empty when it has none.
    std::string containers;
    bool hasLog = false;

    bool operator==(const ParkedRow&) const = default;
};

/// What the screen shows at one moment. A section without rows is left out; with neither, the screen is empty.
struct ProjectsContent {
    std::string subtitle;
    std::vector<ProjectRow> running;
    /// May be empty.
    std::string runningFooter;
    std::vector<ParkedRow> parked;

    bool operator==(const ProjectsContent&) const = default;
    bool isEmpty() const { return running.empty() && parked.empty(); }
};

/// The projects screen. Main thread.
class ProjectsView {
public:
    static constexpr EmptyText empty = {
        .title = "No Projects Running",
        .sentence = "A project shows up here when a process runs in a folder inside a git repository.",
        .icon = "folder"};
    static constexpr std::string_view projectIcon = "folder", branchIcon = "arrow.triangle.branch";
    static constexpr std::string_view runningTitle = "Running", parkedTitle = "Parked";
    static constexpr std::string_view parkedFooter =
        "Start Again runs each command with the folder and environment it had, and writes its output to "
        "~/Library/Logs/Tolvane.";
    static constexpr std::string_view parkLabel = "Park";
    static constexpr std::string_view parkTooltip =
        "Stop everything in this project and remember how to start it again";
    static constexpr std::string_view stopLabel = "Stop All", revealLabel = "Show in Finder";
    static constexpr std::string_view startAgainLabel = "Start Again";
    static constexpr std::string_view logLabel = "Show Log", forgetLabel = "Forget";

    /// `model` outlives the view. `locale` and `zone` are ICU identifiers.
    ProjectsView(AppModel& model, std::string locale, std::string zone = {});

    ProjectsContent content() const;

    /// Refreshes the facts now and every 15 seconds until `leave` or the end of the view.
    void enter();
    void leave() { standing_.cancel(); }

    // Questions. Each keeps the project as it was when the question was asked. One is open at a time.

    /// The project of the open question.
    const std::optional<ProjectGroup>& confirmStop() const { return confirmStop_; }
    const std::optional<ProjectGroup>& confirmPark() const { return confirmPark_; }
    void askStop(ProjectGroup project);
    void askPark(ProjectGroup project);
    std::optional<Question> stopQuestion() const;
    std::optional<Question> parkQuestion() const;
    void cancel();
    /// Does what the question asked. Returns at once.
    void confirm();

    void startAgain(const ParkedProject& project);
    /// Starts nothing and keeps the log.
    void forget(const ParkedProject& project);
    void showLog(const ParkedProject& project);
    void showFolder(const ProjectGroup& project);

    static std::string subtitle(std::size_t projects);
    /// Empty when no process was left out.
    static std::string runningFooter(const std::vector<ProjectGroup>& groups);
    /// `all` are the rows of all processes.
    static std::string parkMessage(const ProjectGroup& group, const std::vector<ProcRow>& all,
                                   const std::vector<Container>& containers, std::string_view locale);

private:
    using Roots = std::set<std::string, std::less<>>;

    static QCoro::Task<void> end(AppModel* model, ProjectGroup group, bool parks, std::shared_ptr<Roots> ending);
    ProjectRow rowOf(ProjectGroup group) const;
    ParkedRow rowOf(const ParkedProject& project) const;

    AppModel& model_;
    std::string locale_;
    std::string zone_;
    std::optional<ProjectGroup> confirmStop_;
    std::optional<ProjectGroup> confirmPark_;
    CancelSource standing_;
    /// A refresh is running, perhaps one from an earlier visit.
    std::shared_ptr<bool> reading_ = std::make_shared<bool>(false);
    /// Roots of the projects that are being stopped.
    std::shared_ptr<Roots> ending_ = std::make_shared<Roots>();
};

}  // namespace tolvane
