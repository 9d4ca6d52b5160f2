#include "platform/linux/settings/PropertyListDates.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvane::linuxhost {

TEST(PropertyListDates, aDateIsWrittenInWholeSecondsOfUTC) {
    EXPECT_EQ(propertyListText(Date{Seconds{0}}), "2001-01-01T00:00:00Z");
    EXPECT_EQ(propertyListText(Date{Seconds{800'000'000.9}}), "2026-05-09T06:13:20Z");
    EXPECT_EQ(propertyListText(Date{Seconds{-0.1}}), "2000-12-31T23:59:59Z");
}

TEST(PropertyListDates, theNamedDatesHaveTheirYears) {
    EXPECT_EQ(propertyListText(distantPast), "0000-12-30T00:00:00Z");
    EXPECT_EQ(propertyListText(distantFuture), "4001-01-01T00:00:00Z");
}

TEST(PropertyListDates, whatFitsNoYearHasNoText) {
    EXPECT_EQ(propertyListText(Date{Seconds{1e15}}), std::nullopt);
    EXPECT_EQ(propertyListText(Date{Seconds{-1e15}}), std::nullopt);
    EXPECT_EQ(propertyListText(Date{Seconds{std::numeric_limits<double>::quiet_NaN()}}), std::nullopt);
}

TEST(PropertyListDates, textAndDateAreEachOthersInverse) {
    for (const double seconds : {0.0, 1.0, -1.0, 800'000'000.0, 5'097'600.0, 63113904000.0, -63114076800.0}) {
        const Date date{Seconds{seconds}};
        EXPECT_EQ(dateFromPropertyListText(propertyListText(date).value_or("")), date);
    }
}

TEST(PropertyListDates, yearsMayHaveFewerDigits) {
    EXPECT_EQ(dateFromPropertyListText("0-12-30T00:00:00Z"), distantPast);
}

TEST(PropertyListDates, otherFormsAreNoDate) {
    for (const char* text : {"", "2026", "2026-05-09", "2026-13-09T06:13:20Z", "2026-02-30T06:13:20Z",
                             "2026-05-09T06:13:20", "2026-05-09T06:13:20Zx", "x026-05-09T06:13:20Z",
                             "2026-05-09T99:13:20Z", "-1-01-01T00:00:00Z", "99999999999-01-01T00:00:00Z"}) {
        EXPECT_EQ(dateFromPropertyListText(text), std::nullopt) << text;
    }
}

}  // namespace tolvane::linuxhost
