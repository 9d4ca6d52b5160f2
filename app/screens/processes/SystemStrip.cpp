#include "app/screens/processes/SystemStrip.h"

namespace tolvane {

SystemStrip SystemStrip::of(const Snapshot& snapshot, const std::vector<LoadPoint>& loadHistory,
                            std::optional<std::int64_t> swapGrowth, std::optional<std::uint64_t> readBack,
                            std::string_view locale) {
    return {.memory = MemorySummary::of(snapshot.memory, swapGrowth, readBack, locale),
            .cpu = CPUSummary::of(snapshot.cpu, loadHistory, std::nullopt, locale),
            .showHistory = "Show History",
            .showHistoryTooltip = "Memory, swap and CPU over the last 24 hours"};
}

SystemStrip SystemStrip::of(const AppModel& model, std::string_view locale) {
    return of(*model.snapshot, *model.loadHistory, *model.swapGrowth, *model.readBack, locale);
}

}  // namespace tolvane
