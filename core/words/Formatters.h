#pragma once

#include <unicode/datefmt.h>
#include <unicode/listformatter.h>
#include <unicode/locid.h>
#include <unicode/measfmt.h>
#include <unicode/numberformatter.h>
#include <unicode/reldatefmt.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::Words {

/// The formatters of one locale, each made on first use: making one costs a hundred times as much as using it. A
/// formatter that cannot be made is null.
class Formatters {
public:
    enum class DateForm { dateAndTime, time, weekdayAndTime, shortWeekday, dayAndMonth, longDay };

    /// The calling thread's own formatters, kept until the thread ends.
    static Formatters& of(std::string_view locale);

    explicit Formatters(const std::string& locale);

    const icu::number::LocalizedNumberFormatter& decimal(int leastFractionDigits, int mostFractionDigits);
    const icu::number::LocalizedNumberFormatter& percent();
    const icu::ListFormatter* list();
    const icu::MeasureFormat* measure(UMeasureFormatWidth width);
    const icu::RelativeDateTimeFormatter* relative();
    const icu::DateFormat* date(DateForm form, std::string_view zone);

private:
    using NumberFormatter = std::unique_ptr<icu::number::LocalizedNumberFormatter>;

    std::unique_ptr<icu::DateFormat> makeDate(DateForm form) const;

    icu::Locale locale_;
    std::map<std::pair<int, int>, NumberFormatter> decimals_;
    NumberFormatter percent_;
    std::unique_ptr<icu::ListFormatter> list_;
    std::map<UMeasureFormatWidth, std::unique_ptr<icu::MeasureFormat>> measures_;
    std::unique_ptr<icu::RelativeDateTimeFormatter> relative_;
    /// By form, then by zone.
    std::array<std::map<std::string, std::unique_ptr<icu::DateFormat>, std::less<>>, 6> dates_;
};

/// The zone with that identifier; empty means the machine's own.
std::unique_ptr<icu::TimeZone> timeZone(std::string_view zone);

std::string utf8(const icu::UnicodeString& text);

}  // namespace tolvane::Words
