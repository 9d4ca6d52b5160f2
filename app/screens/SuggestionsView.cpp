#include "app/screens/SuggestionsView.h"

#include <algorithm>
#include <utility>

#include "app/Format.h"
#include "app/screens/SuggestionMenu.h"
#include "core/words/Cores.h"

namespace tolvane {

SuggestionRow SuggestionRow::of(Suggestion suggestion, std::string_view locale) {
    auto figure =
        suggestion.cpu ? cores(*suggestion.cpu, std::nullopt, locale) : Format::bytes(suggestion.memory, locale);
    auto label = SuggestionMenu::primaryLabel(suggestion);
    return {.suggestion = std::move(suggestion), .figure = std::move(figure), .primaryLabel = std::move(label)};
}

bool SuggestionRow::looksLike(const SuggestionRow& other) const {
    const auto& a = suggestion;
    const auto& b = other.suggestion;
    return a.id == b.id && a.title == b.title && a.bundlePath == b.bundlePath && a.evidence == b.evidence &&
           a.rule.has_value() == b.rule.has_value() && figure == other.figure && primaryLabel == other.primaryLabel;
}

SuggestionsView::SuggestionsView(AppModel& model, std::string locale) : model_(model), locale_(std::move(locale)) {}

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
    for (const auto& kind : suggestionKinds) {
        SuggestionSection section{
            .kind = kind.kind, .heading = std::string(kind.heading), .footer = std::string(kind.footer), .rows = {}};
        for (const auto& each : visible) {
            if (each.kind == kind.kind) section.rows.push_back(SuggestionRow::of(each, locale_));
        }
        std::ranges::stable_sort(section.rows, std::ranges::greater{},
                                 [](const SuggestionRow& row) { return row.suggestion.cpu.value_or(0); });
        if (!section.rows.empty()) sections.push_back(std::move(section));
    }
    return sections;
}

}  // namespace tolvane
