#include "platform/linux/settings/PropertyListDates.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace tolvane::linuxhost {

namespace {

/// The distant past is the first day of year 1 of the Julian calendar, two days before that of the Gregorian one.
constexpr double firstUnixSecondOfYear0 = -62167219200.0;
constexpr double firstUnixSecondOfYear10000 = 253402300800.0;

/// Takes the digits before `end`, and `end` itself.
std::optional<int> take(std::string_view& text, char end) {
    int number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(rest - text.data());
    if (error != std::errc() || number < 0 || length >= text.size() || text[length] != end) return std::nullopt;
    text.remove_prefix(length + 1);
    return number;
}

}  // namespace

std::optional<std::string> propertyListText(Date date) {
    using namespace std::chrono;
    const double unixTime = std::floor(unixSeconds(date));
    const bool hasFourDigitYear = unixTime >= firstUnixSecondOfYear0 && unixTime < firstUnixSecondOfYear10000;
    if (!hasFourDigitYear) return std::nullopt;
    const sys_seconds moment{seconds(static_cast<std::int64_t>(unixTime))};
    const auto day = floor<days>(moment);
    const year_month_day calendar(day);
    const hh_mm_ss time(moment - day);
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(calendar.year()),
                      static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                      static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                      static_cast<int>(time.seconds().count()));
    return std::string(text.data(), static_cast<std::size_t>(length));
}

std::optional<Date> dateFromPropertyListText(std::string_view text) {
    using namespace std::chrono;
    const auto year = take(text, '-');
    const auto month = take(text, '-');
    const auto day = take(text, 'T');
    const auto hour = take(text, ':');
    const auto minute = take(text, ':');
    const auto second = take(text, 'Z');
    if (!year || !month || !day || !hour || !minute || !second || !text.empty()) return std::nullopt;
    const year_month_day calendar{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                  std::chrono::day(static_cast<unsigned>(*day))};
    if (!calendar.ok() || *year > 9999 || *hour > 24 || *minute > 60 || *second > 60) return std::nullopt;
    const auto moment = sys_days(calendar) + hours(*hour) + minutes(*minute) + seconds(*second);
    return dateFromUnixSeconds(static_cast<double>(moment.time_since_epoch().count()));
}

}  // namespace tolvane::linuxhost
