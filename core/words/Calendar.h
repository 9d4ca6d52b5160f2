#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "base/Date.h"

namespace tolvane {

/// Days as people count them in a time zone: most last 24 hours, but not those on which summer time begins or ends. One
/// thread at a time.
class Calendar {
public:
    /// `zone` is an identifier such as "Europe/Berlin"; empty means the machine's own, unknown means GMT.
    explicit Calendar(std::string_view zone = {});
    ~Calendar();

    /// The first moment of the day that contains the date.
    Date startOfDay(Date date) const;
    /// The same time of day `days` later, or earlier when negative. Returns nullopt for a date that cannot be formed.
    std::optional<Date> addingDays(Date date, int days) const;

private:
    struct Days;
    std::unique_ptr<Days> days_;
};

}  // namespace tolvane
