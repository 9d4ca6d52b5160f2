#pragma once

#include <optional>

#include "base/Date.h"

namespace tolvane {

/// Days as people count them somewhere: most last 24 hours.
class Calendar {
public:
    virtual ~Calendar() = default;

    /// The first moment of the day that the date lies in.
    virtual Date startOfDay(Date date) const = 0;
    /// The same time of day so many days later, or earlier; none for a date that cannot be formed.
    virtual std::optional<Date> addingDays(Date date, int days) const = 0;
};

}  // namespace tolvane
