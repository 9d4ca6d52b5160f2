#include "core/words/MachineZone.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "core/words/Calendar.h"
#include "core/words/DateWords.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

/// 1 June 2026, 12:36 UTC.
constexpr Date noonish = dateFromUnixSeconds(1'780'317'360);

/// A machine whose zone the test sets twice: in the link, which the program reads, and in the environment, which ICU
/// asks first.
struct MachineZoneTest : ::testing::Test {
    MachineZoneTest() {
        if (const char* zone = std::getenv("TZ")) before = zone;
        leadTo("Europe/Berlin");
        icu::TimeZone::adoptDefault(icu::TimeZone::detectHostTimeZone());
    }
    ~MachineZoneTest() override {
        if (before) {
            ::setenv("TZ", before->c_str(), 1);
        } else {
            ::unsetenv("TZ");
        }
        icu::TimeZone::adoptDefault(icu::TimeZone::detectHostTimeZone());
    }

    void leadTo(const std::string& zone) {
        ::setenv("TZ", zone.c_str(), 1);
        std::filesystem::remove(folder / "localtime");
        std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, folder / "localtime");
    }

    fakes::TemporaryFolder folder;
    std::optional<std::string> before;
};

TEST_F(MachineZoneTest, wordsAndDaysFollowTheMachine) {
    MachineZone zone(folder / "localtime");
    const Calendar calendar;
    EXPECT_EQ(DateWords::time(noonish, "de_DE"), "14:36");
    EXPECT_EQ(unixSeconds(calendar.startOfDay(noonish)), 1'780'264'800);
    leadTo("Asia/Tokyo");
    EXPECT_TRUE(zone.follow());
    EXPECT_EQ(DateWords::time(noonish, "de_DE"), "21:36");
    EXPECT_EQ(unixSeconds(calendar.startOfDay(noonish)), 1'780'239'600);
}

TEST_F(MachineZoneTest, zonesThatAreAskedForStay) {
    MachineZone zone(folder / "localtime");
    const Calendar calendar("UTC");
    leadTo("Asia/Tokyo");
    EXPECT_TRUE(zone.follow());
    EXPECT_EQ(DateWords::time(noonish, "de_DE", "UTC"), "12:36");
    EXPECT_EQ(unixSeconds(calendar.startOfDay(noonish)), 1'780'272'000);
}

TEST_F(MachineZoneTest, aMachineThatStaysIsAskedNothing) {
    MachineZone zone(folder / "localtime");
    ::setenv("TZ", "Asia/Tokyo", 1);
    EXPECT_FALSE(zone.follow());
    EXPECT_EQ(DateWords::time(noonish, "de_DE"), "14:36");
}

TEST_F(MachineZoneTest, aLinkThatIsMissingChangesNothing) {
    MachineZone zone(folder / "localtime");
    std::filesystem::remove(folder / "localtime");
    ::setenv("TZ", "Asia/Tokyo", 1);
    EXPECT_FALSE(zone.follow());
    EXPECT_EQ(DateWords::time(noonish, "de_DE"), "14:36");
}

}  // namespace
}  // namespace tolvane
