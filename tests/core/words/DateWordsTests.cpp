#include "core/words/DateWords.h"

#include <gtest/gtest.h>

namespace tolvane::DateWords {
namespace {

constexpr double minute = 60;
constexpr double hour = 3600;
constexpr double day = 86400;

/// Thursday 2026-11-19, 12:36:00 UTC.
const Date noonish = dateFromUnixSeconds(1795091760);

std::string relativeTo(double seconds, std::string_view locale = "en_US") {
    return relative(noonish + Seconds{seconds}, noonish, locale, "UTC");
}

TEST(DateWords, tellDateAndTimeAsTheLocaleDoes) {
    EXPECT_EQ(dateAndTime(noonish, "en_GB", "UTC"), "19 Nov 2026, 12:36");
    EXPECT_EQ(dateAndTime(noonish, "en_US", "UTC"), "Nov 19, 2026, 12:36\u202fPM");
    EXPECT_EQ(dateAndTime(noonish, "de_DE", "UTC"), "19.11.2026, 12:36");
}

TEST(DateWords, tellTheTimeAlone) {
    EXPECT_EQ(time(noonish, "en_US", "UTC"), "12:36\u202fPM");
    EXPECT_EQ(time(noonish, "de_DE", "UTC"), "12:36");
}

TEST(DateWords, tellTheWeekdayWithTheTime) {
    EXPECT_EQ(weekdayAndTime(noonish, "en_US", "UTC"), "Thursday 12:36\u202fPM");
    EXPECT_EQ(weekdayAndTime(noonish, "de_DE", "UTC"), "Donnerstag, 12:36");
}

TEST(DateWords, standInTheZoneAskedFor) {
    EXPECT_EQ(time(noonish, "de_DE", "Asia/Tokyo"), "21:36");
    EXPECT_EQ(time(noonish, "de_DE", "America/New_York"), "07:36");
    EXPECT_EQ(time(noonish, "de_DE", "UTC"), "12:36");
}

TEST(DateWords, takeTheEndsOfTime) {
    EXPECT_FALSE(dateAndTime(distantPast, "en_US", "UTC").empty());
    EXPECT_FALSE(dateAndTime(distantFuture, "en_US", "UTC").empty());
    EXPECT_FALSE(relative(distantPast, distantFuture, "en_US", "UTC").empty());
}

TEST(RelativeDate, isNowWithinASecond) {
    EXPECT_EQ(relativeTo(0), "now");
    EXPECT_EQ(relativeTo(-0.9), "now");
    EXPECT_EQ(relativeTo(0.9), "now");
}

TEST(RelativeDate, cutsWhatIsSmallerThanItsUnit) {
    EXPECT_EQ(relativeTo(-1), "1 second ago");
    EXPECT_EQ(relativeTo(-59), "59 seconds ago");
    EXPECT_EQ(relativeTo(-minute), "1 minute ago");
    EXPECT_EQ(relativeTo(-59 * minute - 59), "59 minutes ago");
    EXPECT_EQ(relativeTo(-hour), "1 hour ago");
    EXPECT_EQ(relativeTo(-day + 1), "23 hours ago");
}

TEST(RelativeDate, namesDaysByTheCalendar) {
    EXPECT_EQ(relativeTo(-day), "yesterday");
    EXPECT_EQ(relativeTo(-day - 12 * hour), "yesterday");
    EXPECT_EQ(relativeTo(-day - 13 * hour), "2 days ago");
    EXPECT_EQ(relativeTo(-6 * day), "6 days ago");
}

TEST(RelativeDate, goesOnToWeeksMonthsAndYears) {
    EXPECT_EQ(relativeTo(-7 * day), "last week");
    EXPECT_EQ(relativeTo(-20 * day), "2 weeks ago");
    EXPECT_EQ(relativeTo(-31 * day), "last month");
    EXPECT_EQ(relativeTo(-200 * day), "6 months ago");
    EXPECT_EQ(relativeTo(-365 * day), "last year");
    EXPECT_EQ(relativeTo(-3 * 366 * day), "3 years ago");
}

TEST(RelativeDate, speaksOfTheFutureToo) {
    EXPECT_EQ(relativeTo(5 * minute), "in 5 minutes");
    EXPECT_EQ(relativeTo(day), "tomorrow");
    EXPECT_EQ(relativeTo(14 * day), "in 2 weeks");
}

TEST(RelativeDate, speaksTheLanguageOfTheLocale) {
    EXPECT_EQ(relativeTo(-day, "de_DE"), "gestern");
    EXPECT_EQ(relativeTo(-2 * hour, "de_DE"), "vor 2 Stunden");
}

}  // namespace
}  // namespace tolvane::DateWords
