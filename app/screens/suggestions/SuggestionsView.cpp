#include "app/screens/suggestions/SuggestionsView.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "app/rows/Format.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

/// The start time of each process of the sample.
using Starts = std::unordered_map<Pid, Date>;

Starts startsOf(const std::vector<Suggestion>& suggestions, const std::vector<ProcRow>& rows) {
    Starts starts;
    for (const auto& each : suggestions) {
        for (const Pid pid : each.pids) starts.try_emplace(pid, distantPast);
    }
    for (const auto& row : rows) {
        if (const auto place = starts.find(row.id()); place != starts.end()) place->second = row.sample.startTime;
    }
    return starts;
}

std::vector<Incarnation> livesOf(const std::vector<Pid>& pids, const Starts& starts) {
    std::vector<Incarnation> lives;
    for (const Pid pid : pids) lives.push_back({.pid = pid, .startTime = starts.at(pid)});
    return lives;
}

}  // namespace

SuggestionRow SuggestionRow::of(Suggestion suggestion, std::string_view locale) {
    auto figure =
        suggestion.cpu ? Words::cores(*suggestion.cpu, std::nullopt, locale) : Format::bytes(suggestion.memory, locale);
    auto label = SuggestionMenu::primaryLabel(suggestion);
    return {.suggestion = std::move(suggestion),
            .lives = {},
            .figure = std::move(figure),
            .primaryLabel = std::move(label)};
}

bool SuggestionRow::looksLike(const SuggestionRow& other) const {
    const auto& a = suggestion;
    const auto& b = other.suggestion;
    return a.id == b.id && a.title == b.title && a.appPath == b.appPath && a.evidence == b.evidence &&
           a.rule.has_value() == b.rule.has_value() && figure == other.figure && primaryLabel == other.primaryLabel;
}

SuggestionsView::SuggestionsView(AppModel& model, std::string locale, Told failed)
    : model_(model), locale_(std::move(locale)), failed_(std::make_shared<Told>(std::move(failed))) {}

std::string SuggestionsView::subtitle() const {
    const auto visible = model_.visibleSuggestions();
    if (visible.empty()) return {};
    std::uint64_t total = 0;
    for (const auto& each : visible) total += each.memory;
    const auto count = visible.size() == 1 ? "1 suggestion" : std::to_string(visible.size()) + " suggestions";
    return Format::bytes(total, locale_) + " in " + count;
}

std::vector<SuggestionSection> SuggestionsView::sections() const {
    std::vector<SuggestionSection> sections;
    const auto visible = model_.visibleSuggestions();
    const auto starts = startsOf(visible, model_.snapshot->rows);
    for (const auto& kind : suggestionKinds) {
        SuggestionSection section{
            .kind = kind.kind, .heading = std::string(kind.heading), .footer = std::string(kind.footer), .rows = {}};
        for (const auto& each : visible) {
            if (each.kind != kind.kind) continue;
            section.rows.push_back(SuggestionRow::of(each, locale_));
            section.rows.back().lives = livesOf(each.pids, starts);
        }
        std::ranges::stable_sort(section.rows, std::ranges::greater{},
                                 [](const SuggestionRow& row) { return row.suggestion.cpu.value_or(0); });
        if (!section.rows.empty()) sections.push_back(std::move(section));
    }
    return sections;
}

void SuggestionsView::carryOut(SuggestionRow row, SuggestionAction action) {
    const auto starts = startsOf({row.suggestion}, model_.snapshot->rows);
    std::erase_if(row.suggestion.pids, [&](Pid pid) {
        const Incarnation now{.pid = pid, .startTime = starts.at(pid)};
        return std::ranges::find(row.lives, now) == row.lives.end();
    });
    static_cast<void>(tellFailure(SuggestionMenu::carryOut(model_, std::move(row.suggestion), action), failed_));
}

QCoro::Task<> SuggestionsView::tellFailure(QCoro::Task<std::optional<Outcome>> act, std::weak_ptr<Told> failed) {
    const auto outcome = co_await act;
    const auto told = failed.lock();
    if (outcome && told && *told) (*told)(*outcome);
}

}  // namespace tolvane
