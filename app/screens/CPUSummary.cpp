#include "app/screens/CPUSummary.h"

#include <algorithm>

#include "app/rows/Format.h"
#include "app/sampling/ClockSetBack.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

std::string coresOf(double inCores, std::string_view locale) {
    return Words::cores(inCores * 100, std::nullopt, locale);
}

std::vector<ValueRow> partsOf(const CPULoad& cpu, std::string_view locale) {
    if (cpu.efficiencyCores > 0) {
        const int performanceCores = cpu.cores - cpu.efficiencyCores;
        return {{.label = "Performance",
                 .value = CPUSummary::part(cpu.performance, performanceCores, locale),
                 .mark = "performance"},
                {.label = "Efficiency",
                 .value = CPUSummary::part(cpu.efficiency, cpu.efficiencyCores, locale),
                 .mark = "efficiency"}};
    }
    return {{.label = "User", .value = coresOf(cpu.user * cpu.cores, locale)},
            {.label = "System", .value = coresOf(cpu.system * cpu.cores, locale)}};
}

ValueRow peakRow(const std::vector<LoadPoint>& points, std::string_view locale) {
    double peak = 0;
    for (const auto& point : points) peak = std::max(peak, point.performance + point.efficiency);
    return {.label = "Peak", .value = coresOf(peak, locale), .tooltip = "Highest in the last hour"};
}

/// The points to draw; none when there are too few for a line.
std::vector<LoadPoint> drawn(const std::vector<LoadPoint>& loadHistory) {
    constexpr std::size_t fewest = 2;
    auto points = sinceClockWentBack(loadHistory);
    if (points.size() < fewest) points.clear();
    return points;
}

/// For screen readers: the axes of the chart, and the latest value of each area.
std::string detailOf(const std::vector<LoadPoint>& chart, std::string_view locale) {
    if (chart.empty()) return {};
    const auto figure = [locale](double inCores) { return Format::decimal(inCores, 0, 1, locale); };
    return "Time, Cores; Efficiency " + figure(chart.back().efficiency) + ", Performance " +
           figure(chart.back().performance);
}

}  // namespace

std::string CPUSummary::load(const CPULoad& cpu, std::string_view locale) {
    return part((cpu.user + cpu.system) * cpu.cores, cpu.cores, locale);
}

std::string CPUSummary::part(double share, int count, std::string_view locale) {
    return Format::decimal(share, 1, 1, locale) + " of " + std::to_string(count) + " cores";
}

CPUSummary CPUSummary::of(const CPULoad& cpu, const std::vector<LoadPoint>& loadHistory,
                          const std::optional<TableRow>& busiest, std::string_view locale) {
    CPUSummary summary{.headline = "CPU",
                       .busyNow = load(cpu, locale) + " busy now",
                       .chart = drawn(loadHistory),
                       .chartText = "CPU load over the last hour, performance cores stacked on efficiency cores",
                       .chartCaption = "Last hour. Blue: performance cores, grey: efficiency cores.",
                       .rows = partsOf(cpu, locale)};
    summary.chartDetail = detailOf(summary.chart, locale);
    if (!loadHistory.empty()) summary.rows.push_back(peakRow(loadHistory, locale));
    if (busiest) {
        summary.rows.push_back(
            {.label = "Busiest", .value = busiest->title + ", " + Words::cores(busiest->cpu, std::nullopt, locale)});
    }
    return summary;
}

}  // namespace tolvane
