#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "core/words/Calendar.h"

namespace tolvane {

/// The calendar of a time zone, with its changes of summer time. One thread at a time.
class ZoneCalendar : public Calendar {
public:
    /// `zone` is an identifier such as "Europe/Berlin"; the empty one is the machine's own. An unknown one is GMT.
    explicit ZoneCalendar(std::string_view zone = {});
    ~ZoneCalendar() override;

    Date startOfDay(Date date) const override;
    std::optional<Date> addingDays(Date date, int days) const override;

private:
    struct Days;
    std::unique_ptr<Days> days_;
};

}  // namespace tolvane
