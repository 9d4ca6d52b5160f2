#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/EmptyText.h"
#include "app/screens/Question.h"

namespace tolvane {

/// Selects the entries of the log to list.
enum class ActivityFilter { all, actions, logOnly };

struct ActivityFilterTraits {
    ActivityFilter filter;
    std::string_view rawValue;
    std::string_view label;
    /// Shown in place of the table while no entry passes.
    EmptyText empty;
};

inline constexpr std::array<ActivityFilterTraits, 3> activityFilters = {{
    {ActivityFilter::all,
     "all",
     "All",
     {"No Activity", "Every time a rule acts, or would act in dry run, it is listed here.", "list.bullet.rectangle"}},
    {ActivityFilter::actions,
     "actions",
     "Actions",
     {"No Actions", "No rule has acted yet. Rules in Log Only only write what they would do.",
      "line.3.horizontal.decrease.circle"}},
    {ActivityFilter::logOnly,
     "logOnly",
     "Log Only",
     {"Nothing Logged", "Rules in Log Only have not matched anything yet.", "line.3.horizontal.decrease.circle"}},
}};

/// The columns of the activity table, in order.
enum class ActivityColumn { time, whatHappened, subject, memory, rule };

struct ActivityColumnTraits {
    ActivityColumn column;
    std::string_view title;
    /// Numbers are aligned to the column's far edge.
    bool trailing;
    /// The widest text that the column usually holds; empty for columns that share the remaining width.
    std::string_view widestSample;
};

inline constexpr std::array<ActivityColumnTraits, 5> activityColumns = {{
    {ActivityColumn::time, "Time", false, ""},
    {ActivityColumn::whatHappened, "What Happened", false, "Would terminate"},
    {ActivityColumn::subject, "Process or App", false, ""},
    {ActivityColumn::memory, "Memory", true, "888.8 MB"},
    {ActivityColumn::rule, "Rule", false, ""},
}};

/// The activity screen: the log as a table. A log can be long, so rows are indices into the model's list, and a cell's
/// text is made only when it is shown. Main thread.
class ActivityView {
public:
    static constexpr std::string_view filterLabel = "Show";
    static constexpr std::string_view clearLabel = "Clear Activity";

    /// `model` outlives the view. `locale` and `zone` are ICU identifiers; an empty zone is the machine's.
    ActivityView(AppModel& model, std::string locale, std::string zone = {});

    /// Stores the choice in the preferences.
    ActivityFilter filter() const { return filter_; }
    void setFilter(ActivityFilter filter);

    /// Indices into `AppModel::activity` of the listed entries, newest first.
    std::vector<std::uint32_t> rows() const;
    static bool passes(const ActivityEntry& entry, ActivityFilter filter);
    std::string cell(const ActivityEntry& entry, ActivityColumn column) const;
    /// The widest text that the column usually holds, in the user's locale; empty for columns that share the remaining
    /// width.
    std::string widestText(ActivityColumn column) const;

    bool canClear() const { return !model_.activity->empty(); }
    void askToClear() { confirmClear_ = canClear(); }
    /// Set while the question is open.
    std::optional<Question> clearQuestion() const;
    void cancelClear() { confirmClear_ = false; }
    /// Clears the log, including its file.
    void confirmClear();

    AppModel& model() const { return model_; }

private:
    AppModel& model_;
    std::string locale_;
    std::string zone_;
    ActivityFilter filter_ = ActivityFilter::all;
    bool confirmClear_ = false;
};

}  // namespace tolvane
