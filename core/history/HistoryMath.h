#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "core/history/Moment.h"
#include "core/sampling/SystemMemory.h"

namespace tolvane {

/// What grew between two moments, as it stood at the later one.
struct Grower {
    Holder holder;
    /// Bytes.
    std::uint64_t amount = 0;

    bool operator==(const Grower&) const = default;
};

/// Swap is growing, or memory is being read back from it, fast enough to tell the user.
struct SwapWarning {
    /// Bytes over the last quarter of an hour.
    std::uint64_t growth = 0;
    /// The largest first.
    std::vector<Grower> growers;
    /// `growth` counts memory read back; else swap that grew.
    bool readBack = false;

    bool operator==(const SwapWarning&) const = default;
};

}  // namespace tolvane

/// Is swap growing, is memory being read back from it, and who is responsible: judged over about a quarter of an hour
/// of moments, which come oldest first. Under ten minutes of data nothing is judged.
namespace tolvane::HistoryMath {

inline constexpr Seconds window{900.0};
/// Bytes over the window from which on memory is tight.
inline constexpr std::int64_t tightGrowth = 536'870'912;

/// `since` is one of the moments given.
template <typename Bytes>
struct Change {
    Bytes amount = 0;
    const Moment* since = nullptr;
};

/// Negative when swap shrank.
std::optional<Change<std::int64_t>> swapGrowth(std::span<const Moment> moments, std::int64_t swapNow, Date now);

/// None as well when no moment of the window carries the running total, or when the total went backwards.
std::optional<Change<std::uint64_t>> readBack(std::span<const Moment> moments, std::uint64_t swapInsNow, Date now);

bool isTight(Pressure pressure, std::optional<std::int64_t> swapGrowth, std::optional<std::uint64_t> readBack);

/// Memory read back outranks swap that grew; growth counts from 1 GiB of swap on.
std::optional<SwapWarning> swapWarning(std::span<const Moment> moments, std::int64_t swapNow,
                                       std::optional<std::uint64_t> swapInsNow, Date now);

/// The holders that gained 50 MiB or more, the largest gain first. `by` reads the figure, such as `&Holder::memory`.
/// One that was not on the earlier list counts only when it started since.
std::vector<Grower> grewMost(const Moment& from, const Moment& to,
                             const std::function<std::uint64_t(const Holder&)>& by, std::size_t limit);

}  // namespace tolvane::HistoryMath
