#include "core/words/DateWords.h"

#include <unicode/calendar.h>
#include <unicode/gregocal.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "core/words/Formatters.h"

namespace tolvane::DateWords {

namespace {

using Words::Formatters;

UDate icuDate(Date date) { return unixSeconds(date) * 1000; }

std::string formatted(Date date, Formatters::DateForm form, std::string_view locale, std::string_view zone) {
    const auto* formatter = Formatters::of(locale).date(form, zone);
    if (!formatter) return {};
    icu::UnicodeString text;
    return Words::utf8(formatter->format(icuDate(date), text));
}

/// A whole number of units; negative means the past.
struct Offset {
    double amount = 0;
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

double localDay(UDate date, const icu::TimeZone& zone) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t raw = 0;
    std::int32_t daylight = 0;
    zone.getOffset(date, false, raw, daylight, status);
    return std::floor((date + raw + daylight) / U_MILLIS_PER_DAY);
}

int wholeMonths(UDate from, UDate to, const icu::TimeZone& zone) {
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(zone, status);
    calendar.setTime(from, status);
    const auto months = calendar.fieldDifference(to, UCAL_MONTH, status);
    return U_SUCCESS(status) ? months : 0;
}

Offset onClock(double seconds) {
    const double span = std::abs(seconds);
    if (span < 60) return {std::trunc(seconds), UDAT_REL_UNIT_SECOND};
    if (span < 3600) return {std::trunc(seconds / 60), UDAT_REL_UNIT_MINUTE};
    return {std::trunc(seconds / 3600), UDAT_REL_UNIT_HOUR};
}

Offset onCalendar(UDate date, UDate now, const icu::TimeZone& zone) {
    const double days = localDay(date, zone) - localDay(now, zone);
    if (std::abs(days) < 7) return {days, UDAT_REL_UNIT_DAY};
    const int months = wholeMonths(now, date, zone);
    if (months == 0) return {std::trunc(days / 7), UDAT_REL_UNIT_WEEK};
    if (std::abs(months) < 12) return {static_cast<double>(months), UDAT_REL_UNIT_MONTH};
    return {std::trunc(months / 12.0), UDAT_REL_UNIT_YEAR};
}

}  // namespace

std::string dateAndTime(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::dateAndTime, locale, zone);
}

std::string time(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::time, locale, zone);
}

std::string weekdayAndTime(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::weekdayAndTime, locale, zone);
}

std::string shortWeekday(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::shortWeekday, locale, zone);
}

std::string dayAndMonth(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::dayAndMonth, locale, zone);
}

std::string longDay(Date date, std::string_view locale, std::string_view zone) {
    return formatted(date, Formatters::DateForm::longDay, locale, zone);
}

std::string relative(Date date, Date now, std::string_view locale, std::string_view zone) {
    constexpr double day = 86400;
    const auto* formatter = Formatters::of(locale).relative();
    if (!formatter) return {};
    const double seconds = (date - now).count();
    const auto offset =
        std::abs(seconds) < day ? onClock(seconds) : onCalendar(icuDate(date), icuDate(now), *Words::timeZone(zone));
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    // Adding zero turns -0 into +0: "now" has no direction.
    formatter->format(offset.amount + 0.0, offset.unit, text, status);
    return Words::utf8(text);
}

}  // namespace tolvane::DateWords
