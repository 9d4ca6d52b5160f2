#pragma once

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/rows/TableRow.h"
#include "app/screens/Question.h"

namespace tolvane {

/// The columns of the processes table, in order.
enum class ProcessColumn { name, memory, inRAM, compressed, cpu, unusedFor, runningFor, pid };

struct ProcessColumnTraits {
    ProcessColumn column;
    std::string_view title;
    /// nullopt for a column that cannot sort.
    std::optional<RowField> sortsBy;
    std::string_view tooltip;
    /// The widest text that the column usually holds and initially has room for; empty for the column that takes the
    /// remaining width.
    std::string_view widestSample;
};

extern const std::array<ProcessColumnTraits, 8> processColumns;

/// The processes screen: the content and order of its table, and what its controls do. Main thread.
class ProcessesView {
public:
    static constexpr std::string_view groupLabel = "Group";
    static constexpr std::string_view searchPrompt = "Name, command, project or PID";
    static constexpr std::string_view inspectorLabel = "Inspector";
    static constexpr std::string_view inspectorIcon = "sidebar.trailing";

    /// `model` outlives the view. `locale` is an ICU identifier.
    ProcessesView(AppModel& model, std::string locale);

    /// Stores the choice in the preferences.
    Grouping grouping() const;
    void setGrouping(Grouping grouping);
    const std::string& search() const { return search_; }
    void setSearch(std::string search) { search_ = std::move(search); }
    const std::vector<RowOrder>& sortOrder() const { return sortOrder_; }
    /// The user clicked a column's header. A new column starts with its largest values (names with the first letters,
    /// times with the longest); the same column reverses its order.
    void sortBy(RowField field);
    void setSortOrder(std::vector<RowOrder> order) { sortOrder_ = std::move(order); }
    bool showInspector = true;

    /// The rows that match the search, folded and sorted.
    std::vector<TableRow> rows() const;
    /// The text of one cell; the name column shows `detail` separately.
    std::string cell(const TableRow& row, ProcessColumn column) const;
    /// The rows that the inspector shows: none, one, or several.
    std::vector<TableRow> selected(const std::vector<TableRow>& rows) const;

    /// The user asked to force quit those rows: opens the question. Skips unknown ids, and asks nothing when none is
    /// left.
    void askForceQuit(const std::set<std::string>& ids, const std::vector<TableRow>& rows);
    /// The question while it is open.
    std::optional<Question> forceQuitQuestion() const;
    void cancelForceQuit() { confirmForceQuit_.reset(); }
    /// The user confirmed. Returns the rows to force quit, closes the question and clears the selection.
    std::vector<TableRow> confirmForceQuit();

    // The same functions on plain values.
    static std::vector<ProcRow> rowsMatching(const std::vector<ProcRow>& rows, std::string_view search,
                                             std::string_view locale);
    static std::vector<TableRow> rowsOf(const Snapshot& snapshot, Grouping grouping, std::string_view search,
                                        const std::vector<RowOrder>& order, const RowNames& names,
                                        std::string_view locale);
    static std::string cellOf(const TableRow& row, ProcessColumn column, Date now, std::string_view locale);
    /// The order after a click on the header of the column that sorts by `field`; earlier choices break ties.
    static std::vector<RowOrder> orderAfterClick(std::vector<RowOrder> order, RowField field);

    /// The inspector's text while nothing is selected.
    static constexpr std::string_view noSelectionTitle = "No Selection";
    static constexpr std::string_view noSelectionIcon = "cursorarrow.rays";
    static constexpr std::string_view noSelectionText = "Select a process or group to see its details.";

    AppModel& model() const { return model_; }
    const std::string& locale() const { return locale_; }

private:
    AppModel& model_;
    std::string locale_;
    Grouping grouping_ = Grouping::apps;
    std::string search_;
    std::vector<RowOrder> sortOrder_ = {RowOrder{}};
    std::optional<std::vector<TableRow>> confirmForceQuit_;
};

}  // namespace tolvane
