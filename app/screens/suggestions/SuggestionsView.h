#pragma once

#include <QCoroTask>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/acts/Outcome.h"
#include "app/model/AppModel.h"
#include "app/screens/EmptyText.h"
#include "app/screens/suggestions/SuggestionMenu.h"
#include "platform/ProcessControl.h"

namespace tolvane {

struct SuggestionKindTraits {
    Suggestion::Kind kind;
    std::string_view heading;
    std::string_view footer;
};

/// In the order of the sections.
inline constexpr std::array<SuggestionKindTraits, 6> suggestionKinds = {{
    {Suggestion::Kind::simulator, "Simulator left booted",
     "A booted simulator keeps every one of its processes in memory until it shuts down, open window or not."},
    {Suggestion::Kind::leftRunning, "Left running",
     "Dev servers whose terminal or agent has quit, still listening on a port."},
    {Suggestion::Kind::growing, "Growing steadily",
     "Memory has risen steadily for at least two hours, a common sign of a leak."},
    {Suggestion::Kind::duplicate, "Running twice", "The same command in the same project, started more than once."},
    {Suggestion::Kind::busy, "Keeping the CPU busy",
     "Half a CPU core or more for at least 15 minutes, while not the frontmost app."},
    {Suggestion::Kind::idle, "Idle", "Unused for a while and either large or mostly compressed while the Mac swaps."},
}};

/// One suggestion as a row shows it.
struct SuggestionRow {
    Suggestion suggestion;
    /// Its processes when it was shown, with their start times, so that a reused pid is not mistaken for one of them.
    std::vector<Incarnation> lives;
    /// Memory, or cores for a busy process.
    std::string figure;
    std::string primaryLabel;

    static SuggestionRow of(Suggestion suggestion, std::string_view locale);
    /// Whether the two look the same. Ignores proposed rules, which every tick makes anew.
    bool looksLike(const SuggestionRow& other) const;
};

struct SuggestionSection {
    Suggestion::Kind kind = Suggestion::Kind::idle;
    std::string heading;
    std::string footer;
    std::vector<SuggestionRow> rows;
};

/// The suggestions screen. Main thread.
class SuggestionsView {
public:
    static constexpr std::string_view showHiddenLabel = "Show Hidden Suggestions";
    static constexpr std::string_view showHiddenIcon = "eye";
    static constexpr std::string_view showHiddenHelp = "Show suggestions you snoozed or ignored";
    static constexpr EmptyText empty{
        "Nothing to Suggest",
        "Tolvane looks for idle simulators left booted, dev servers left running after their terminal closed, "
        "processes that keep growing, a second copy of the same dev server, processes that keep the CPU busy in the "
        "background, and idle apps holding memory. Growth shows up after two hours of watching.",
        "checkmark.circle"};

    using Told = std::function<void(const Outcome&)>;

    /// `model` outlives the view. `locale` is an ICU identifier. `failed` gets what did not work, as long as the view
    /// lives.
    SuggestionsView(AppModel& model, std::string locale, Told failed = {});

    /// "8.41 GB in 7 suggestions"; empty without suggestions.
    std::string subtitle() const;
    /// In the order of the kinds; leaves out kinds without suggestions.
    std::vector<SuggestionSection> sections() const;
    /// Acts on those of the row's processes that are still alive. Ending processes continues after the call returns.
    void carryOut(SuggestionRow row, SuggestionAction action);
    bool canShowHidden() const { return !model_.hiddenSuggestions->empty(); }
    void showHidden() { model_.showHiddenSuggestions(); }

private:
    static QCoro::Task<> tellFailure(QCoro::Task<std::optional<Outcome>> act, std::weak_ptr<Told> failed);

    AppModel& model_;
    std::string locale_;
    std::shared_ptr<Told> failed_;
};

}  // namespace tolvane
