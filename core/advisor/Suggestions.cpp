#include <algorithm>
#include <functional>
#include <string_view>

#include "core/advisor/Advice.h"
#include "core/advisor/Advisor.h"

namespace tolvane {

namespace {

constexpr std::string_view chrome = "|com.google.Chrome";
constexpr std::string_view chromeNote =
    " Chrome's Memory Saver (Settings > Performance) discards inactive tabs without a restart.";

void noteMemorySaver(Suggestion& suggestion) {
    const bool isOfMemory = suggestion.kind == Suggestion::Kind::growing || suggestion.kind == Suggestion::Kind::idle;
    if (isOfMemory && suggestion.id.ends_with(chrome)) suggestion.evidence += chromeNote;
}

}  // namespace

std::vector<Suggestion> Advisor::suggestions(const AdviceScene& scene) const {
    Advice advice(scene, *this);
    Detectors::findSimulators(advice);
    Detectors::findLeftRunning(advice);
    Detectors::findGrowing(advice);
    Detectors::findDuplicates(advice);
    Detectors::findBusy(advice);
    Detectors::findIdle(advice);

    auto results = std::move(advice.results());
    std::ranges::for_each(results, noteMemorySaver);
    std::ranges::stable_sort(results, std::ranges::greater{}, &Suggestion::memory);
    return results;
}

}  // namespace tolvane
