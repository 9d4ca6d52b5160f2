#pragma once

#include <string>
#include <string_view>

#include "base/Date.h"

/// Formats dates as text for a locale and a time zone. `zone` is an identifier such as "Europe/Berlin"; empty means the
/// machine's own. Callable from any thread.
namespace tolvane::DateWords {

/// "Nov 19, 2026, 12:36 PM"
std::string dateAndTime(Date date, std::string_view locale, std::string_view zone = {});

/// "12:36 PM"
std::string time(Date date, std::string_view locale, std::string_view zone = {});

/// "Thursday 12:36 PM"
std::string weekdayAndTime(Date date, std::string_view locale, std::string_view zone = {});

/// "Sat"
std::string shortWeekday(Date date, std::string_view locale, std::string_view zone = {});

/// "Nov 19"
std::string dayAndMonth(Date date, std::string_view locale, std::string_view zone = {});

/// "Thursday, November 19"
std::string longDay(Date date, std::string_view locale, std::string_view zone = {});

/// "now", "5 minutes ago", "yesterday", "in 2 weeks": the largest unit that fits, with smaller parts cut. From a
/// difference of 24 hours on, days and longer units are counted on the calendar.
std::string relative(Date date, Date now, std::string_view locale, std::string_view zone = {});

}  // namespace tolvane::DateWords
