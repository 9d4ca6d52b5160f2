#pragma once

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

#include "base/Date.h"
#include "base/Text.h"
#include "core/json/Fields.h"

namespace tolvane {

/// Something that held memory at a moment. Sizes in bytes. A day has tens of thousands of holders, most with the same
/// few texts, so code that makes them shares the texts.
struct Holder {
    /// Identity of the row across moments.
    Text key;
    Text title;
    std::optional<Text> appPath = std::nullopt;
    std::uint64_t memory = 0;
    std::uint64_t compressed = 0;
    /// Percent of one core.
    double cpu = 0;
    std::optional<Date> started;
    /// Running total of memory read back from swap.
    std::optional<std::uint64_t> swapIns;

    std::uint64_t readBack() const { return swapIns.value_or(0); }
    bool operator==(const Holder&) const = default;
};

/// The whole machine at one moment of the day's history. Sizes in bytes.
struct Moment {
    Date date;
    std::uint64_t total = 0;
    std::uint64_t used = 0;
    std::uint64_t compressed = 0;
    std::uint64_t swapUsed = 0;
    /// The kernel's level: 1, 2 or 4.
    std::int64_t pressure = 1;
    /// Fraction of all cores, 0 to 1.
    double cpu = 0;
    std::int64_t cores = 1;
    std::vector<Holder> holders;
    /// In cores. Files of older versions lack this field and the ones below.
    std::optional<double> performance;
    std::optional<double> efficiency;
    std::optional<std::uint64_t> swapIns;

    bool operator==(const Moment&) const = default;
};

}  // namespace tolvane

namespace tolvane::json {

template <>
struct Fields<Holder> {
    static constexpr auto fields =
        std::tuple(Field{"key", &Holder::key}, Field{"title", &Holder::title}, Field{"bundlePath", &Holder::appPath},
                   Field{"memory", &Holder::memory}, Field{"compressed", &Holder::compressed},
                   Field{"cpu", &Holder::cpu}, Field{"started", &Holder::started}, Field{"swapIns", &Holder::swapIns});
};

template <>
struct Fields<Moment> {
    static constexpr auto fields =
        std::tuple(Field{"date", &Moment::date}, Field{"total", &Moment::total}, Field{"used", &Moment::used},
                   Field{"compressed", &Moment::compressed}, Field{"swapUsed", &Moment::swapUsed},
                   Field{"pressure", &Moment::pressure}, Field{"cpu", &Moment::cpu}, Field{"cores", &Moment::cores},
                   Field{"holders", &Moment::holders}, Field{"performance", &Moment::performance},
                   Field{"efficiency", &Moment::efficiency}, Field{"swapIns", &Moment::swapIns});
};

}  // namespace tolvane::json
