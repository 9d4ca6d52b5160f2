#include "app/rows/Format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/fakes/Rows.h"

namespace tolvane::Format {
namespace {

using fakes::GiB;
using fakes::MiB;

std::string figure(std::uint64_t value) { return bytes(value, "en_US"); }

TEST(FormatBytes, turnsToGigabytesBeforeAFourthDigit) {
    EXPECT_EQ(figure(1048576000 - 1), "1,000 MB");
    EXPECT_EQ(figure(1048576000), "0.98 GB");
    EXPECT_EQ(figure(1073741824 - 1), "1 GB");
    EXPECT_EQ(figure(1073741824), "1 GB");
    EXPECT_EQ(figure(999 * MiB), "999 MB");
}

TEST(FormatBytes, saysTheUsualSizes) {
    EXPECT_EQ(figure(0), "Zero KB");
    EXPECT_EQ(figure(1), "1 byte");
    EXPECT_EQ(figure(1023), "1,023 bytes");
    EXPECT_EQ(figure(1024), "1 KB");
    EXPECT_EQ(figure(MiB - 1), "1,024 KB");
    EXPECT_EQ(figure(512 * MiB), "512 MB");
    EXPECT_EQ(figure(GiB + GiB / 2), "1.5 GB");
    EXPECT_EQ(bytes(GiB + GiB / 2, "de_DE"), "1,5 GB");
}

std::string after(double seconds) { return duration(Date{Seconds{1000}}, Date{Seconds{1000 + seconds}}); }

TEST(FormatDuration, isUnderAMinuteBelowSixtySeconds) {
    EXPECT_EQ(after(0), "<1m");
    EXPECT_EQ(after(59.999), "<1m");
    EXPECT_EQ(after(60), "1m");
}

TEST(FormatDuration, countsAFutureStartAsNow) {
    EXPECT_EQ(after(-1), "<1m");
    EXPECT_EQ(after(-1e9), "<1m");
}

TEST(FormatDuration, hasHoursAndMinutesBelowADay) {
    EXPECT_EQ(after(5 * 60 + 59), "5m");
    EXPECT_EQ(after(3599), "59m");
    EXPECT_EQ(after(3600), "1h");
    EXPECT_EQ(after(3660), "1h 1m");
    EXPECT_EQ(after(3900), "1h 5m");
    EXPECT_EQ(after(86399), "23h 59m");
}

TEST(FormatDuration, hasDaysAndHoursFromADayOn) {
    EXPECT_EQ(after(86400), "1d");
    EXPECT_EQ(after(86400 + 3599), "1d");
    EXPECT_EQ(after(86400 + 3600), "1d 1h");
    EXPECT_EQ(after(3 * 86400 + 4 * 3600), "3d 4h");
    EXPECT_EQ(after(1000 * 86400.0), "1000d");
}

TEST(FormatDuration, takesTheEndsOfTimeAndWhatIsNoNumber) {
    EXPECT_EQ(duration(distantFuture, distantPast), "<1m");
    EXPECT_EQ(duration(distantPast, distantFuture), "1460972d");
    EXPECT_EQ(after(std::nan("")), "<1m");
    EXPECT_NE(after(std::numeric_limits<double>::infinity()), "");
}

TEST(FormatDecimal, hasTheDigitsAskedFor) {
    EXPECT_EQ(decimal(3.9, 1, 1, "en_US"), "3.9");
    EXPECT_EQ(decimal(4, 1, 1, "de_DE"), "4,0");
}

TEST(FormatList, joinsAsTheLocaleDoes) { EXPECT_EQ(list({"A", "B", "C"}, "en_US"), "A, B, and C"); }

}  // namespace
}  // namespace tolvane::Format
