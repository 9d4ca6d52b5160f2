#include "app/screens/panel/PanelView.h"

#include <algorithm>
#include <utility>

#include "app/rows/Format.h"
#include "core/words/DateWords.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

constexpr std::size_t linesShown = 7;
constexpr std::size_t suggestionsShown = 3;

}  // namespace

PanelView PanelView::of(const AppModel& model, std::string_view locale) {
    const auto& snapshot = *model.snapshot;
    auto lines = TableRow::build(snapshot.rows, Grouping::apps, snapshot.memory.compressionRatio, model.rowNames());
    const auto suggestions = model.visibleSuggestions();
    const auto& activity = *model.activity;
    PanelView panel{.memory = MemorySummary::of(snapshot.memory, *model.swapGrowth, *model.readBack, locale),
                    .cpu = CPUSummary::of(snapshot.cpu, *model.loadHistory, busiestOf(lines), locale),
                    .largest = largestOf(std::move(lines), snapshot.date, locale),
                    .suggestions = suggestionsOf(suggestions, locale),
                    .showSuggestions = showSuggestionsLabel(suggestions.size()),
                    .rulesPaused = *model.rulesPaused};
    if (!activity.empty()) panel.lastActivity = activityOf(activity.front(), model.now(), locale);
    return panel;
}

std::vector<PanelLine> PanelView::largestOf(std::vector<TableRow> lines, Date now, std::string_view locale) {
    std::ranges::stable_sort(lines, std::ranges::greater{}, &TableRow::memory);
    if (lines.size() > linesShown) lines.resize(linesShown);
    std::vector<PanelLine> rows;
    rows.reserve(lines.size());
    for (auto& line : lines) {
        rows.push_back({.appPath = std::move(line.appPath),
                        .title = std::move(line.title),
                        .unusedFor = Format::duration(line.unusedSince, now),
                        .memory = Format::bytes(line.memory, locale)});
    }
    return rows;
}

std::optional<TableRow> PanelView::busiestOf(const std::vector<TableRow>& lines) {
    const auto found = std::ranges::max_element(lines, {}, &TableRow::cpu);
    return found == lines.end() ? std::nullopt : std::optional(*found);
}

std::vector<PanelSuggestion> PanelView::suggestionsOf(const std::vector<Suggestion>& suggestions,
                                                      std::string_view locale) {
    std::vector<PanelSuggestion> rows;
    for (const auto& each : suggestions) {
        if (rows.size() == suggestionsShown) break;
        rows.push_back(
            {.appPath = each.appPath,
             .title = each.title,
             .tag = std::string(tagOf(each.kind)),
             .figure = each.cpu ? Words::cores(*each.cpu, std::nullopt, locale) : Format::bytes(each.memory, locale)});
    }
    return rows;
}

std::string PanelView::showSuggestionsLabel(std::size_t count) {
    return count > suggestionsShown ? "Show All " + std::to_string(count) + " Suggestions" : "Show";
}

PanelActivity PanelView::activityOf(const ActivityEntry& entry, Date now, std::string_view locale) {
    return {.text = entry.outcome.str() + ": " + entry.subject.str(),
            .when = DateWords::relative(entry.date, now, locale)};
}

std::string_view PanelView::tagOf(Suggestion::Kind kind) {
    switch (kind) {
        case Suggestion::Kind::simulator:
            return "Simulator left booted";
        case Suggestion::Kind::leftRunning:
            return "Left running";
        case Suggestion::Kind::growing:
            return "Growing steadily";
        case Suggestion::Kind::duplicate:
            return "Running twice";
        case Suggestion::Kind::busy:
            return "Keeping the CPU busy";
        case Suggestion::Kind::idle:
            break;
    }
    return "Idle";
}

void PanelView::openMainWindow(AppModel& model) { model.openWindow(); }

void PanelView::openSuggestions(AppModel& model) { model.open(AppSection::suggestions); }

}  // namespace tolvane
