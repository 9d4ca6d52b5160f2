#include "core/words/Words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

namespace tolvane::Words {
namespace {

constexpr std::uint64_t KB = 1024;
constexpr std::uint64_t MB = 1024 * KB;
constexpr std::uint64_t GB = 1024 * MB;
constexpr std::uint64_t TB = 1024 * GB;
constexpr std::uint64_t PB = 1024 * TB;

std::string figure(std::uint64_t value) { return bytes(value, ByteStyle::figure, "en_US"); }
std::string sentence(std::uint64_t value) { return bytes(value, ByteStyle::sentence, "en_US"); }

TEST(Bytes, speakOfNoneInWords) {
    EXPECT_EQ(figure(0), "Zero KB");
    EXPECT_EQ(sentence(0), "Zero kB");
}

TEST(Bytes, countSingleOnesBelowAKilobyte) {
    EXPECT_EQ(figure(1), "1 byte");
    EXPECT_EQ(figure(2), "2 bytes");
    EXPECT_EQ(figure(999), "999 bytes");
    EXPECT_EQ(figure(1000), "1,000 bytes");
    EXPECT_EQ(figure(KB - 1), "1,023 bytes");
    EXPECT_EQ(sentence(1), "1 byte");
}

TEST(Bytes, areWholeKilobytesBelowAMegabyte) {
    EXPECT_EQ(figure(KB), "1 KB");
    EXPECT_EQ(figure(KB + KB / 2 - 1), "1 KB");
    EXPECT_EQ(figure(100 * KB), "100 KB");
    EXPECT_EQ(figure(1023 * KB), "1,023 KB");
}

TEST(Bytes, chooseTheUnitBeforeTheyAreRounded) {
    EXPECT_EQ(figure(MB - 1), "1,024 KB");
    EXPECT_EQ(figure(MB), "1 MB");
    EXPECT_EQ(figure(TB - 1), "1,024 GB");
    EXPECT_EQ(figure(TB), "1 TB");
    EXPECT_EQ(sentence(GB - 1), "1,024 MB");
}

TEST(Bytes, roundHalfToEven) {
    EXPECT_EQ(figure(KB + KB / 2), "2 KB");
    EXPECT_EQ(figure(2 * KB + KB / 2), "2 KB");
    EXPECT_EQ(figure(3 * KB + KB / 2), "4 KB");
    EXPECT_EQ(figure(MB + MB / 4), "1.2 MB");
    EXPECT_EQ(figure(MB + MB / 4 * 3), "1.8 MB");
    EXPECT_EQ(figure(GB + GB / 8), "1.12 GB");
    EXPECT_EQ(figure(GB + GB / 8 * 3), "1.38 GB");
}

TEST(Bytes, haveOneFractionDigitInMegabytesAndTwoFromGigabytesOn) {
    EXPECT_EQ(figure(512 * MB), "512 MB");
    EXPECT_EQ(figure(MB + MB / 2), "1.5 MB");
    EXPECT_EQ(figure(999 * MB + MB / 2), "999.5 MB");
    EXPECT_EQ(figure(GB + GB / 2), "1.5 GB");
    EXPECT_EQ(figure(16 * GB), "16 GB");
    EXPECT_EQ(figure(16 * GB + GB / 3), "16.33 GB");
    EXPECT_EQ(figure(TB + TB / 3), "1.33 TB");
    EXPECT_EQ(figure(PB + PB / 3), "1.33 PB");
}

TEST(Bytes, reachTheLargestNumber) {
    EXPECT_EQ(figure(static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())), "8 EB");
    EXPECT_EQ(figure(std::numeric_limits<std::uint64_t>::max()), "16 EB");
}

TEST(Bytes, turnToGigabytesAtAThousandMegabytesInFigures) {
    EXPECT_EQ(figure(1000 * MB - 1), "1,000 MB");
    EXPECT_EQ(figure(1000 * MB), "0.98 GB");
    EXPECT_EQ(figure(GB - 1), "1 GB");
    EXPECT_EQ(figure(GB), "1 GB");
}

TEST(Bytes, stayInMegabytesUpToAGigabyteInSentences) {
    EXPECT_EQ(sentence(1000 * MB), "1,000 MB");
    EXPECT_EQ(sentence(1023 * MB), "1,023 MB");
    EXPECT_EQ(sentence(GB), "1 GB");
}

TEST(Bytes, haveTheNumbersOfTheLocale) {
    EXPECT_EQ(bytes(GB + GB / 2, ByteStyle::figure, "de_DE"), "1,5 GB");
    EXPECT_EQ(bytes(MB - 1, ByteStyle::figure, "de_DE"), "1.024 KB");
    EXPECT_EQ(bytes(512 * MB, ByteStyle::figure, "ar_EG"), "٥١٢ MB");
}

TEST(Decimal, hasBetweenTheLeastAndTheMostFractionDigits) {
    EXPECT_EQ(decimal(3, 1, 1, "en_US"), "3.0");
    EXPECT_EQ(decimal(3, 0, 1, "en_US"), "3");
    EXPECT_EQ(decimal(3.14159, 0, 3, "en_US"), "3.142");
    EXPECT_EQ(decimal(1234567.5, 0, 1, "en_US"), "1,234,567.5");
}

TEST(Decimal, roundsHalfToEvenOnTheShortestDecimal) {
    EXPECT_EQ(decimal(0.25, 1, 1, "en_US"), "0.2");
    EXPECT_EQ(decimal(0.35, 1, 1, "en_US"), "0.4");
    EXPECT_EQ(decimal(2.675, 0, 2, "en_US"), "2.68");
    EXPECT_EQ(decimal(2.5, 0, 0, "en_US"), "2");
}

TEST(Decimal, ofAlmostNothingHasNoSign) {
    EXPECT_EQ(decimal(-0.01, 1, 1, "en_US"), "0.0");
    EXPECT_EQ(decimal(-0.0, 0, 1, "en_US"), "0");
    EXPECT_EQ(decimal(-1.5, 0, 1, "en_US"), "-1.5");
}

TEST(Decimal, takesWhatIsNoNumber) {
    EXPECT_EQ(decimal(std::nan(""), 0, 1, "en_US"), "NaN");
    EXPECT_EQ(decimal(std::numeric_limits<double>::infinity(), 0, 1, "en_US"), "∞");
}

TEST(Decimal, hasTheDigitsOfTheLocale) {
    EXPECT_EQ(decimal(3.5, 1, 1, "de_DE"), "3,5");
    EXPECT_EQ(decimal(3.5, 1, 1, "ar_EG"), "٣٫٥");
}

TEST(Words, workInALocaleThatNobodyKnows) {
    for (const auto* locale : {"", "xx_YY", "not a locale", "de_DE.UTF-8@euro", "C"}) {
        EXPECT_FALSE(decimal(3.5, 1, 1, locale).empty()) << locale;
        EXPECT_FALSE(duration(Seconds{60}, UnitWidth::wide, locale).empty()) << locale;
        EXPECT_FALSE(list({"A", "B"}, locale).empty()) << locale;
    }
}

TEST(Words, areTheSameOnEveryThread) {
    std::string elsewhere;
    std::thread([&] { elsewhere = decimal(1234.5, 0, 1, "de_DE"); }).join();
    EXPECT_EQ(elsewhere, decimal(1234.5, 0, 1, "de_DE"));
}

TEST(Percent, isWhole) {
    EXPECT_EQ(percent(0.25, "en_US"), "25%");
    EXPECT_EQ(percent(0.996, "en_US"), "100%");
    EXPECT_EQ(percent(0, "en_US"), "0%");
    EXPECT_EQ(percent(0.25, "de_DE"), "25\u00a0%");
}

TEST(List, joinsAsTheLocaleDoes) {
    EXPECT_EQ(list({}, "en_US"), "");
    EXPECT_EQ(list({"A"}, "en_US"), "A");
    EXPECT_EQ(list({"A", "B"}, "en_US"), "A and B");
    EXPECT_EQ(list({"A", "B", "C"}, "en_US"), "A, B, and C");
    EXPECT_EQ(list({"A", "B", "C"}, "de_DE"), "A, B und C");
}

std::string brief(double seconds) { return duration(Seconds{seconds}, UnitWidth::abbreviated, "en_US"); }

TEST(Duration, leavesOutWhatIsZero) {
    EXPECT_EQ(brief(60), "1 min");
    EXPECT_EQ(brief(1800), "30 min");
    EXPECT_EQ(brief(3600), "1 hr");
    EXPECT_EQ(brief(5400), "1 hr, 30 min");
    EXPECT_EQ(brief(86400), "1 day");
    EXPECT_EQ(brief(86400 + 60), "1 day, 1 min");
    EXPECT_EQ(brief(2 * 86400 + 3 * 3600 + 4 * 60), "2 days, 3 hr, 4 min");
}

TEST(Duration, isRoundedToTheMinuteHalfToEven) {
    EXPECT_EQ(brief(89), "1 min");
    EXPECT_EQ(brief(90), "2 min");
    EXPECT_EQ(brief(150), "2 min");
    EXPECT_EQ(brief(210), "4 min");
    EXPECT_EQ(brief(3599), "1 hr");
    EXPECT_EQ(brief(86399), "1 day");
}

TEST(Duration, ofNothingIsNoMinutes) {
    EXPECT_EQ(brief(0), "0 min");
    EXPECT_EQ(brief(29), "0 min");
    EXPECT_EQ(brief(-500), "0 min");
    EXPECT_EQ(brief(std::nan("")), "0 min");
}

TEST(Duration, takesTheLongestSpan) {
    EXPECT_NE(brief(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(brief((distantFuture - distantPast).count()), "1,460,972 days");
}

TEST(Duration, isWrittenOutInTheWideWidth) {
    EXPECT_EQ(duration(Seconds{5400}, UnitWidth::wide, "en_US"), "1 hour, 30 minutes");
    EXPECT_EQ(duration(Seconds{7200}, UnitWidth::wide, "en_US"), "2 hours");
    EXPECT_EQ(duration(Seconds{86400}, UnitWidth::wide, "en_US"), "1 day");
    EXPECT_EQ(duration(Seconds{5400}, UnitWidth::wide, "de_DE"), "1 Stunde, 30 Minuten");
}

TEST(Cores, areCountedInTheSingularForExactlyOne) {
    EXPECT_EQ(Words::cores(100, std::nullopt, "en_US"), "1 core");
    EXPECT_EQ(Words::cores(103, std::nullopt, "en_US"), "1 core");
    EXPECT_EQ(Words::cores(100, "performance", "en_US"), "1 performance core");
}

TEST(Cores, areCountedInThePluralOtherwise) {
    EXPECT_EQ(Words::cores(50, "performance", "en_US"), "0.5 performance cores");
    EXPECT_EQ(Words::cores(0, std::nullopt, "en_US"), "0 cores");
    EXPECT_EQ(Words::cores(110, std::nullopt, "en_US"), "1.1 cores");
    EXPECT_EQ(Words::cores(1200, std::nullopt, "en_US"), "12 cores");
    EXPECT_EQ(Words::cores(50, std::nullopt, "de_DE"), "0,5 cores");
}

}  // namespace
}  // namespace tolvane::Words
