#pragma once

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace tolvane {

/// The points since the clock was last set back, or all of them if it never was. Earlier points follow another time and
/// cannot share a line with the rest. `points` are in the order in which they were taken.
template <typename Point>
std::vector<Point> sinceClockWentBack(std::vector<Point> points) {
    const auto wentBack = [](const Point& later, const Point& earlier) { return later.date < earlier.date; };
    const auto after = std::adjacent_find(points.rbegin(), points.rend(), wentBack);
    if (after != points.rend()) points.erase(points.begin(), std::prev(after.base()));
    return points;
}

}  // namespace tolvane
