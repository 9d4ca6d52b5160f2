#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "base/Date.h"

namespace tolvane {

/// Days as people count them in a time zone: most last 24 hours, those on which summer time changes do not. One thread
/// at a time.
class Calendar {
public:
    /// `zone` is an identifier such as "Europe/Berlin"; the empty one is the machine's own. An unknown one is GMT.
    explicit Calendar(std::string_view zone = {});
    ~Calendar();

    /// The first moment of the day that the date lies in.
    Date startOfDay(Date date) const;
    /// The same time of day so many days later, or earlier. Returns nullopt for a date that cannot be formed.
    std::optional<Date> addingDays(Date date, int days) const;

private:
    struct Days;
    std::unique_ptr<Days> days_;
};

}  // namespace tolvane
