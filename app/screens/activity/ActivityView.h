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

/// Which entries of the log are listed.
enum class ActivityFilter { all, actions, logOnly };

struct ActivityFilterTraits {
    ActivityFilter filter;
    std::string_view rawValue;
    std::string_view label;
    /// What stands in the table's place while nothing passes.
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
    /// Figures stand at the column's far edge.
    bool trailing;
    /// The widest text that the column usually holds; empty for those that share what is left.
    std::string_view widestSample;
};

inline constexpr std::array<ActivityColumnTraits, 5> activityColumns = {{
    {ActivityColumn::time, "Time", false, ""},
    {ActivityColumn::whatHappened, "What Happened", false, "Would terminate"},
    {ActivityColumn::subject, "Process or App", false, ""},
    {ActivityColumn::memory, "Memory", true, "888.8 MB"},
    {ActivityColumn::rule, "Rule", false, ""},
}};

/// The activity screen: the log as a table. A log can be long: rows are places in the model's list, and a cell gets its
/// text when somebody looks at it. Main thread.
class ActivityView {
public:
    static constexpr std::string_view filterLabel = "Show";
    static constexpr std::string_view clearLabel = "Clear Activity";

    /// `model` outlives the view. `locale` is an ICU identifier, `zone` one of a time zone; empty is the machine's.
    ActivityView(AppModel& model, std::string locale, std::string zone = {});

    /// Remembered in the preferences.
    ActivityFilter filter() const { return filter_; }
    void setFilter(ActivityFilter filter);

    /// Where in `AppModel::activity` the listed entries stand, newest first.
    std::vector<std::uint32_t> rows() const;
    static bool passes(const ActivityEntry& entry, ActivityFilter filter);
    std::string cell(const ActivityEntry& entry, ActivityColumn column) const;
    /// The widest text that the column usually holds, in the user's locale; empty for those that share what is left.
    std::string widestText(ActivityColumn column) const;

    bool canClear() const { return !model_.activity->empty(); }
    void askToClear() { confirmClear_ = canClear(); }
    /// While it is open.
    std::optional<Question> clearQuestion() const;
    void cancelClear() { confirmClear_ = false; }
    /// Empties the log, on disk too.
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
