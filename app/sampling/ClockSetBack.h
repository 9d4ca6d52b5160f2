#pragma once

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace tolvane {

/// The points from the latest moment on at which the clock was set back: what stands before it has another time, and
/// cannot be drawn on one line with the rest. All of them where the clock never was. `points` are in the order in which
/// they were taken.
template <typename Point>
std::vector<Point> sinceClockWentBack(std::vector<Point> points) {
    const auto wentBack = [](const Point& later, const Point& earlier) { return later.date < earlier.date; };
    const auto after = std::adjacent_find(points.rbegin(), points.rend(), wentBack);
    if (after != points.rend()) points.erase(points.begin(), std::prev(after.base()));
    return points;
}

}  // namespace tolvane
