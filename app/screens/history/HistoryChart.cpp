#include "app/screens/history/HistoryChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "app/rows/Format.h"

namespace tolvane {

namespace {

constexpr int memoryHeight = 200;
constexpr int cpuHeight = 110;
constexpr double bytesPerGB = 1 << 30;
constexpr double mostSteps = 4;
/// Leaves room above the highest point.
constexpr double headroom = 1.05;
constexpr double none = std::numeric_limits<double>::quiet_NaN();

/// Doubles `least` until a few steps reach `top`.
double stepFor(double top, double least) {
    double step = least;
    while (step * mostSteps < top && std::isfinite(top)) step *= 2;
    return step;
}

std::vector<HistoryTick> ticksUpTo(double top, double step, std::string_view unit, std::string_view locale) {
    std::vector<HistoryTick> ticks;
    for (int number = 0; number <= static_cast<int>(mostSteps) && number * step <= top; ++number) {
        const double value = number * step;
        ticks.push_back({.value = value, .label = Format::decimal(value, 0, 2, locale) + std::string(unit)});
    }
    return ticks;
}

template <typename ValueOf>
std::vector<double> values(const MomentList& moments, const ValueOf& valueOf) {
    std::vector<double> found;
    found.reserve(moments.size());
    for (const auto* moment : moments) found.push_back(valueOf(*moment));
    return found;
}

double inGB(std::uint64_t bytes) { return static_cast<double>(bytes) / bytesPerGB; }

double highest(const std::vector<HistorySeries>& series) {
    double most = 0;
    for (const auto& each : series) {
        for (const double value : each.values) most = value > most ? value : most;
    }
    return most;
}

std::vector<Date> datesOf(const MomentList& moments) {
    std::vector<Date> dates;
    dates.reserve(moments.size());
    for (const auto* moment : moments) dates.push_back(moment->date);
    return dates;
}

bool tellsCoresApart(const Moment& moment) { return moment.performance && moment.efficiency; }

std::vector<HistorySeries> loadSeries(const MomentList& moments) {
    const auto efficiency = [](const Moment& each) { return tellsCoresApart(each) ? *each.efficiency : none; };
    const auto both = [](const Moment& each) {
        return tellsCoresApart(each) ? *each.efficiency + *each.performance : none;
    };
    const auto whole = [](const Moment& each) {
        return tellsCoresApart(each) ? none : each.cpu * static_cast<double>(each.cores);
    };
    const auto apart = [](const Moment* each) { return tellsCoresApart(*each); };
    std::vector<HistorySeries> series;
    if (std::ranges::any_of(moments, apart)) {
        series.push_back({HistorySeriesKind::efficiency, "Efficiency", values(moments, efficiency)});
        series.push_back({HistorySeriesKind::performance, "Performance", values(moments, both)});
    }
    if (!std::ranges::all_of(moments, apart)) {
        series.push_back({HistorySeriesKind::cpu, "CPU", values(moments, whole)});
    }
    return series;
}

double mostCores(const MomentList& moments) {
    std::int64_t most = 1;
    for (const auto* moment : moments) most = std::max(most, moment->cores);
    return static_cast<double>(most);
}

}  // namespace

bool HistorySeries::operator==(const HistorySeries& other) const {
    const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    return kind == other.kind && name == other.name && std::ranges::equal(values, other.values, same);
}

std::vector<PressureBand> pressureBands(const MomentList& moments) {
    std::vector<PressureBand> bands;
    for (std::size_t next = 1; next < moments.size(); ++next) {
        const auto& moment = *moments[next - 1];
        if (moment.pressure != static_cast<std::int64_t>(Pressure::warning) &&
            moment.pressure != static_cast<std::int64_t>(Pressure::critical)) {
            continue;
        }
        bands.push_back({.start = moment.date,
                         .end = moments[next]->date,
                         .pressure = static_cast<Pressure>(static_cast<int>(moment.pressure))});
    }
    return bands;
}

HistoryChart MemoryHistoryChart::of(const MomentList& moments, const HistoryDomain& domain, std::string_view locale) {
    HistoryChart chart{
        .title = "Memory",
        .note = "Shaded where macOS reported memory pressure: yellow elevated, red critical.",
        .spoken = "Memory used, compressed and swap over time",
        .yLabel = "GB",
        .seriesLabel = "Kind",
        .height = memoryHeight,
        .from = domain.from,
        .to = domain.to,
        .dates = datesOf(moments),
        .series = {{HistorySeriesKind::used, "Used", values(moments, [](auto& each) { return inGB(each.used); })},
                   {HistorySeriesKind::compressed, "Compressed",
                    values(moments, [](auto& each) { return inGB(each.compressed); })},
                   {HistorySeriesKind::swap, "Swap", values(moments, [](auto& each) { return inGB(each.swapUsed); })}},
        .bands = pressureBands(moments),
        .focus = domain.focus};
    constexpr double leastStep = 0.25;
    const double most = highest(chart.series);
    const double step = stepFor(most, leastStep);
    chart.top = std::max(step * std::ceil(most / step), most * headroom);
    if (!(chart.top > 0)) chart.top = step;
    chart.ticks = ticksUpTo(chart.top, step, " GB", locale);
    return chart;
}

HistoryChart CPUHistoryChart::of(const MomentList& moments, const HistoryDomain& domain, std::string_view locale) {
    HistoryChart chart{.title = "CPU",
                       .spoken = "CPU load in cores over time, performance cores stacked on efficiency cores",
                       .yLabel = "Cores",
                       .height = cpuHeight,
                       .from = domain.from,
                       .to = domain.to,
                       .dates = datesOf(moments),
                       .series = loadSeries(moments),
                       .focus = domain.focus};
    chart.top = std::max(mostCores(moments), highest(chart.series));
    chart.ticks = ticksUpTo(chart.top, stepFor(chart.top, 1), "", locale);
    return chart;
}

}  // namespace tolvane
