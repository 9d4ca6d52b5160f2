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

/// A holder that grew between two moments, as it stood at the later one.
struct Grower {
    Holder holder;
    /// Bytes.
    std::uint64_t amount = 0;

    bool operator==(const Grower&) const = default;
};

/// Swap is growing, or memory is being read back from it, fast enough to notify the user.
struct SwapWarning {
    /// Bytes over the last quarter of an hour.
    std::uint64_t growth = 0;
    /// Largest first.
    std::vector<Grower> growers;
    /// True when `growth` counts memory read back, false when it counts swap growth.
    bool readBack = false;

    bool operator==(const SwapWarning&) const = default;
};

}  // namespace tolvane

/// Decides whether swap is growing, whether memory is being read back from it, and which holders cause it, over about a
/// quarter of an hour of moments. Moments are ordered oldest first. Less than ten minutes of data gives no result.
namespace tolvane::HistoryMath {

inline constexpr Seconds window{900.0};
/// Growth over the window, in bytes, at which memory counts as tight.
inline constexpr std::int64_t tightGrowth = 536'870'912;

/// `since` points to one of the given moments.
template <typename Bytes>
struct Change {
    Bytes amount = 0;
    const Moment* since = nullptr;
};

/// Negative when swap shrank.
std::optional<Change<std::int64_t>> swapGrowth(std::span<const Moment> moments, std::int64_t swapNow, Date now);

/// Also nullopt when no moment of the window carries the running total, or when the total went backwards.
std::optional<Change<std::uint64_t>> readBack(std::span<const Moment> moments, std::uint64_t swapInsNow, Date now);

bool isTight(Pressure pressure, std::optional<std::int64_t> swapGrowth, std::optional<std::uint64_t> readBack);

/// Memory read back outranks swap growth, which counts only from 1 GiB of swap on.
std::optional<SwapWarning> swapWarning(std::span<const Moment> moments, std::int64_t swapNow,
                                       std::optional<std::uint64_t> swapInsNow, Date now);

/// The holders that gained 50 MiB or more, largest gain first. `by` reads the value, such as `&Holder::memory`. A
/// holder missing from the earlier moment counts only if it started since.
std::vector<Grower> grewMost(const Moment& from, const Moment& to,
                             const std::function<std::uint64_t(const Holder&)>& by, std::size_t limit);

}  // namespace tolvane::HistoryMath
