#include "app/screens/MemorySummary.h"

#include <algorithm>

#include "app/rows/Format.h"
#include "core/history/HistoryMath.h"

namespace tolvane {

namespace {

/// Less swapping than this in a quarter of an hour is not worth mentioning.
constexpr std::uint64_t leastShownSwapping = 64 * 1024 * 1024;

std::string share(std::uint64_t part, std::uint64_t whole, std::string_view locale) {
    return Format::bytes(part, locale) + " of " + Format::bytes(whole, locale);
}

std::string growthRemark(std::optional<std::int64_t> swapGrowth, std::string_view locale) {
    if (!swapGrowth || *swapGrowth < static_cast<std::int64_t>(leastShownSwapping)) return {};
    return "up " + Format::bytes(static_cast<std::uint64_t>(*swapGrowth), locale) + " in 15 min";
}

ValueRow usedRow(const SystemMemory& memory, std::string_view locale) {
    return {.label = "Used",
            .value = share(memory.used(), memory.total, locale),
            .tooltip =
                "App memory, wired memory and compressed memory. Cached files are left out: macOS hands them "
                "back as soon as an app needs room."};
}

ValueRow compressedRow(const SystemMemory& memory, std::string_view locale) {
    return {.label = "Compressed",
            .value = Format::bytes(memory.compressed, locale),
            .tooltip = "Memory macOS compressed to make room, about " +
                       Format::decimal(memory.compressionRatio, 0, 1, locale) +
                       " to 1 right now. A large figure while pressure is normal is healthy."};
}

ValueRow swapRow(const SystemMemory& memory, std::optional<std::int64_t> swapGrowth, std::string_view locale) {
    return {.label = "Swap",
            .value = share(memory.swapUsed, memory.swapTotal, locale),
            .remark = growthRemark(swapGrowth, locale),
            .tooltip =
                "Compressed memory macOS wrote to disk. Swap that sits still costs nothing; apps wait only while "
                "macOS reads it back."};
}

ValueRow readBackRow(std::uint64_t readBack, std::string_view locale) {
    return {.label = "Read back",
            .value = Format::bytes(readBack, locale) + " in 15 min",
            .tooltip = "Memory macOS read back from swap. Apps stall while this happens.",
            .warns = readBack >= static_cast<std::uint64_t>(HistoryMath::tightGrowth)};
}

}  // namespace

std::string_view levelText(Pressure pressure) {
    switch (pressure) {
        case Pressure::warning:
            return "Elevated";
        case Pressure::critical:
            return "Critical";
        case Pressure::normal:
            break;
    }
    return "Normal";
}

MemorySummary MemorySummary::of(const SystemMemory& memory, std::optional<std::int64_t> swapGrowth,
                                std::optional<std::uint64_t> readBack, std::string_view locale) {
    const std::string level(levelText(memory.pressure));
    const auto used = static_cast<double>(memory.used());
    MemorySummary summary{
        .headline = "Memory",
        .pressure = memory.pressure,
        .pressureText = "Pressure " + level,
        .pressureTooltip =
            "macOS sets pressure from free memory, swap rate, wired memory and cached files. Elevated "
            "or critical means apps are waiting for memory.",
        .usedFraction = memory.total > 0 ? std::min(used / static_cast<double>(memory.total), 1.0) : 0,
        .gaugeAccessibleText = "Memory used " + share(memory.used(), memory.total, locale) + ", pressure " + level,
        .rows = {usedRow(memory, locale), compressedRow(memory, locale), swapRow(memory, swapGrowth, locale)}};
    if (readBack && *readBack >= leastShownSwapping) summary.rows.push_back(readBackRow(*readBack, locale));
    return summary;
}

}  // namespace tolvane
