#pragma once

#include <tuple>

#include "core/history/Moment.h"
#include "core/json/Fields.h"

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
