#include "desktop/charts/RoundTicks.h"

#include <array>
#include <cmath>

namespace tolvane::desktop {

double roundTop(double value) {
    if (!(value > 0) || !std::isfinite(value)) return 1;
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double step : std::array{1.0, 2.0, 5.0}) {
        if (value <= step * power) return step * power;
    }
    return 10 * power;
}

}  // namespace tolvane::desktop
