#include "core/words/Words.h"

#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/words/Formatters.h"

namespace tolvane::Words {

namespace {

constexpr std::uint64_t kibi = 1024;
constexpr std::uint64_t thousandMB = 1000 * kibi * kibi;

struct ByteUnit {
    std::string_view name;
    int mostFractionDigits;
};

constexpr std::array<ByteUnit, 7> byteUnits = {
    {{"bytes", 0}, {"KB", 0}, {"MB", 1}, {"GB", 2}, {"TB", 2}, {"PB", 2}, {"EB", 2}}};

std::size_t byteUnitOf(std::uint64_t value, ByteStyle style) {
    constexpr std::size_t gigabytes = 3;
    std::size_t unit = 0;
    for (auto rest = value; rest >= kibi; rest /= kibi) ++unit;
    return style == ByteStyle::figure && value >= thousandMB ? std::max(unit, gigabytes) : unit;
}

std::string formatted(const icu::number::LocalizedNumberFormatter& formatter, double value) {
    UErrorCode status = U_ZERO_ERROR;
    const auto result = formatter.formatDouble(value, status).toString(status);
    return U_SUCCESS(status) ? utf8(result) : std::string();
}

/// The days, hours and minutes that are not zero; only the minutes when all are zero.
std::vector<icu::Measure> measuresOf(std::int64_t minutes) {
    constexpr std::int64_t perHour = 60;
    constexpr std::int64_t perDay = 24 * perHour;
    std::vector<icu::Measure> measures;
    UErrorCode status = U_ZERO_ERROR;
    const auto add = [&](std::int64_t amount, icu::MeasureUnit* adopted) {
        measures.emplace_back(icu::Formattable(amount), adopted, status);
    };
    if (minutes >= perDay) add(minutes / perDay, icu::MeasureUnit::createDay(status));
    if (minutes % perDay >= perHour) add(minutes % perDay / perHour, icu::MeasureUnit::createHour(status));
    if (minutes % perHour > 0 || measures.empty()) add(minutes % perHour, icu::MeasureUnit::createMinute(status));
    return measures;
}

std::int64_t roundedMinutes(Seconds span) {
    constexpr double most = 1e15;
    const double minutes = span.count() / 60;
    if (!(minutes > 0)) return 0;
    return static_cast<std::int64_t>(std::nearbyint(std::min(minutes, most)));
}

}  // namespace

std::string bytes(std::uint64_t value, ByteStyle style, std::string_view locale) {
    if (value == 0) return style == ByteStyle::figure ? "Zero KB" : "Zero kB";
    const auto unit = byteUnitOf(value, style);
    const auto amount = std::ldexp(static_cast<double>(value), -10 * static_cast<int>(unit));
    const auto name = value == 1 ? std::string_view("byte") : byteUnits[unit].name;
    return decimal(amount, 0, byteUnits[unit].mostFractionDigits, locale).append(" ").append(name);
}

std::string decimal(double value, int leastFractionDigits, int mostFractionDigits, std::string_view locale) {
    return formatted(Formatters::of(locale).decimal(leastFractionDigits, mostFractionDigits), value);
}

std::string percent(double fraction, std::string_view locale) {
    return formatted(Formatters::of(locale).percent(), fraction);
}

std::string list(const std::vector<std::string>& texts, std::string_view locale) {
    const auto* formatter = Formatters::of(locale).list();
    if (!formatter) return {};
    std::vector<icu::UnicodeString> items;
    items.reserve(texts.size());
    for (const auto& text : texts) items.push_back(icu::UnicodeString::fromUTF8(text));
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString joined;
    formatter->format(items.data(), static_cast<std::int32_t>(items.size()), joined, status);
    return utf8(joined);
}

std::string duration(Seconds span, UnitWidth width, std::string_view locale) {
    const auto* formatter =
        Formatters::of(locale).measure(width == UnitWidth::wide ? UMEASFMT_WIDTH_WIDE : UMEASFMT_WIDTH_SHORT);
    if (!formatter) return {};
    const auto measures = measuresOf(roundedMinutes(span));
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    icu::FieldPosition nowhere(icu::FieldPosition::DONT_CARE);
    formatter->formatMeasures(measures.data(), static_cast<std::int32_t>(measures.size()), text, nowhere, status);
    return utf8(text);
}

std::string cores(double percent, std::optional<std::string_view> kind, std::string_view locale) {
    const auto number = decimal(percent / 100, 0, 1, locale);
    const auto unit = kind ? std::string(*kind) + " core" : std::string("core");
    return number + " " + unit + (number == "1" ? "" : "s");
}

}  // namespace tolvane::Words
