#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/sampling/SystemMemory.h"

namespace tolvane {

/// One value with its label, as summaries and inspectors list them.
struct ValueRow {
    std::string label;
    std::string value;
    /// Follows the value in a fainter colour; often empty.
    std::string remark;
    std::string tooltip;
    /// The value needs attention.
    bool warns = false;
    /// Name of a legend mark's colour, "performance" or "efficiency"; empty for a row without a mark.
    std::string mark;

    bool operator==(const ValueRow&) const = default;
};

/// The label of a pressure level: "Normal", "Elevated", "Critical".
std::string_view levelText(Pressure pressure);

/// The memory block of the strip and of the panel: all its texts, and nothing about how it is drawn.
struct MemorySummary {
    std::string headline;
    Pressure pressure = Pressure::normal;
    /// "Pressure Normal"
    std::string pressureText;
    std::string pressureTooltip;
    /// Share of all memory in use, 0 to 1.
    double usedFraction = 0;
    std::string gaugeAccessibleText;
    std::vector<ValueRow> rows;

    bool operator==(const MemorySummary&) const = default;

    /// `swapGrowth` and `readBack` are bytes over the last quarter of an hour; small ones are left out.
    static MemorySummary of(const SystemMemory& memory, std::optional<std::int64_t> swapGrowth,
                            std::optional<std::uint64_t> readBack, std::string_view locale);
};

}  // namespace tolvane
