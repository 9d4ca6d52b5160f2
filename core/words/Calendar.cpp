#include "core/words/Calendar.h"

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include "core/words/Formatters.h"

namespace tolvane {

namespace {

constexpr double millisecondsPerSecond = 1000;

UDate milliseconds(Date date) { return unixSeconds(date) * millisecondsPerSecond; }

}  // namespace

struct Calendar::Days {
    UErrorCode status = U_ZERO_ERROR;
    /// Null when ICU lacks its data; `after` then returns nullopt.
    std::unique_ptr<icu::GregorianCalendar> calendar;
    const bool isMachines;

    explicit Days(std::string_view zone)
        : calendar(std::make_unique<icu::GregorianCalendar>(Words::timeZone(zone).release(), status)),
          isMachines(zone.empty()) {
        if (U_FAILURE(status)) calendar.reset();
        // When an hour comes twice the first one counts: a day begins once.
        if (calendar) calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    }

    /// The machine may be in another zone by now.
    void followMachine() const {
        auto zone = Words::timeZone({});
        if (!(calendar->getTimeZone() == *zone)) calendar->adoptTimeZone(zone.release());
    }

    /// The date that results from applying `change` to `date`.
    template <typename Change>
    std::optional<Date> after(Date date, const Change& change) const {
        if (!calendar) return std::nullopt;
        if (isMachines) followMachine();
        UErrorCode failure = U_ZERO_ERROR;
        calendar->setTime(milliseconds(date), failure);
        change(*calendar, failure);
        const UDate time = calendar->getTime(failure);
        if (U_FAILURE(failure)) return std::nullopt;
        return dateFromUnixSeconds(time / millisecondsPerSecond);
    }
};

Calendar::Calendar(std::string_view zone) : days_(std::make_unique<Days>(zone)) {}
Calendar::~Calendar() = default;

Date Calendar::startOfDay(Date date) const {
    const auto start = days_->after(date, [](icu::Calendar& calendar, UErrorCode&) {
        for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND}) calendar.set(field, 0);
    });
    return start.value_or(date);
}

std::optional<Date> Calendar::addingDays(Date date, int days) const {
    return days_->after(
        date, [days](icu::Calendar& calendar, UErrorCode& status) { calendar.add(UCAL_DAY_OF_MONTH, days, status); });
}

}  // namespace tolvane
