#include "core/words/Formatters.h"

#include <unicode/timezone.h>

namespace tolvane::Words {

namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::NumberFormatter;
using icu::number::Precision;
using icu::number::Scale;

/// ICU's factories return an object even when they report a failure; such an object is unusable.
template <typename Made>
std::unique_ptr<Made> usable(Made* made, UErrorCode status) {
    std::unique_ptr<Made> owned(made);
    if (U_FAILURE(status)) owned.reset();
    return owned;
}

/// A value that rounds to zero from below carries no sign.
LocalizedNumberFormatter rounded(const icu::Locale& locale, const Precision& precision) {
    return NumberFormatter::withLocale(locale)
        .precision(precision)
        .roundingMode(UNUM_ROUND_HALFEVEN)
        .sign(UNUM_SIGN_NEGATIVE);
}

/// The machine may be in another zone by now.
void followMachine(icu::DateFormat& format) {
    auto zone = timeZone({});
    if (!(format.getTimeZone() == *zone)) format.adoptTimeZone(zone.release());
}

}  // namespace

Formatters& Formatters::of(std::string_view locale) {
    thread_local std::map<std::string, Formatters, std::less<>> ofThisThread;
    const auto found = ofThisThread.find(locale);
    if (found != ofThisThread.end()) return found->second;
    const std::string name(locale);
    return ofThisThread.try_emplace(name, name).first->second;
}

Formatters::Formatters(const std::string& locale) : locale_(icu::Locale::createFromName(locale.c_str())) {
    if (locale_.isBogus()) locale_ = icu::Locale::getRoot();
}

const LocalizedNumberFormatter& Formatters::decimal(int leastFractionDigits, int mostFractionDigits) {
    auto& kept = decimals_[{leastFractionDigits, mostFractionDigits}];
    if (!kept) {
        kept = std::make_unique<LocalizedNumberFormatter>(
            rounded(locale_, Precision::minMaxFraction(leastFractionDigits, mostFractionDigits)));
    }
    return *kept;
}

const LocalizedNumberFormatter& Formatters::percent() {
    if (!percent_) {
        percent_ = std::make_unique<LocalizedNumberFormatter>(
            rounded(locale_, Precision::integer()).unit(icu::NoUnit::percent()).scale(Scale::powerOfTen(2)));
    }
    return *percent_;
}

const icu::ListFormatter* Formatters::list() {
    if (!list_) {
        UErrorCode status = U_ZERO_ERROR;
        auto* made = icu::ListFormatter::createInstance(locale_, ULISTFMT_TYPE_AND, ULISTFMT_WIDTH_WIDE, status);
        list_ = usable(made, status);
    }
    return list_.get();
}

const icu::MeasureFormat* Formatters::measure(UMeasureFormatWidth width) {
    auto& kept = measures_[width];
    if (!kept) {
        UErrorCode status = U_ZERO_ERROR;
        auto made = std::make_unique<icu::MeasureFormat>(locale_, width, status);
        if (U_SUCCESS(status)) kept = std::move(made);
    }
    return kept.get();
}

const icu::RelativeDateTimeFormatter* Formatters::relative() {
    if (!relative_) {
        UErrorCode status = U_ZERO_ERROR;
        auto made = std::make_unique<icu::RelativeDateTimeFormatter>(locale_, status);
        if (U_SUCCESS(status)) relative_ = std::move(made);
    }
    return relative_.get();
}

const icu::DateFormat* Formatters::date(DateForm form, std::string_view zone) {
    auto& ofForm = dates_[static_cast<std::size_t>(form)];
    const auto found = ofForm.find(zone);
    if (found != ofForm.end()) {
        if (zone.empty() && found->second) followMachine(*found->second);
        return found->second.get();
    }
    auto made = makeDate(form);
    if (made) made->adoptTimeZone(timeZone(zone).release());
    return ofForm.emplace(zone, std::move(made)).first->second.get();
}

std::unique_ptr<icu::DateFormat> Formatters::makeDate(DateForm form) const {
    using icu::DateFormat;
    const auto ofSkeleton = [this](const char* skeleton) {
        UErrorCode status = U_ZERO_ERROR;
        auto* made = DateFormat::createInstanceForSkeleton(skeleton, locale_, status);
        return usable(made, status);
    };
    switch (form) {
        case DateForm::dateAndTime:
            return usable(DateFormat::createDateTimeInstance(DateFormat::kMedium, DateFormat::kShort, locale_),
                          U_ZERO_ERROR);
        case DateForm::time:
            return usable(DateFormat::createTimeInstance(DateFormat::kShort, locale_), U_ZERO_ERROR);
        case DateForm::weekdayAndTime:
            return ofSkeleton("EEEEjmm");
        case DateForm::shortWeekday:
            return ofSkeleton("EEE");
        case DateForm::dayAndMonth:
            return ofSkeleton("MMMd");
        case DateForm::longDay:
            return ofSkeleton("EEEEMMMMd");
    }
    return nullptr;
}

std::unique_ptr<icu::TimeZone> timeZone(std::string_view zone) {
    if (zone.empty()) return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault());
    const auto length = static_cast<std::int32_t>(zone.size());
    return std::unique_ptr<icu::TimeZone>(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(icu::StringPiece(zone.data(), length))));
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace tolvane::Words
