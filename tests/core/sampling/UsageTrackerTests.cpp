#include "core/sampling/UsageTracker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "core/sampling/Priority.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Date start{Seconds{790'000'000}};
constexpr Date noon{Seconds{800'000'000}};
constexpr std::uint64_t second = 1'000'000'000;

ProcSample sampleOf(Pid pid, std::uint64_t cpu = 0, std::string_view path = "/opt/tool") {
    ProcSample sample;
    sample.pid = pid;
    sample.path = path;
    sample.startTime = start;
    sample.cpuTimeNanos = cpu;
    sample.perfTimeNanos = cpu;
    return sample;
}

class UsageTrackerTest : public ::testing::Test {
protected:
    ProcRow update(ProcSample sample, Date now) { return rowsOf({std::move(sample)}, now).front(); }
    std::vector<ProcRow> rowsOf(std::vector<ProcSample> samples, Date now) {
        return tracker.update(std::move(samples), now);
    }

    fakes::FakeHost host;
    fakes::FakeWorld& world = *host.world;
    UsageTracker tracker{*host.host.applications};
};

TEST_F(UsageTrackerTest, firstReadingIsIdleAndUsedNow) {
    for (const auto& row : rowsOf({sampleOf(10, 5 * second), sampleOf(11)}, noon)) {
        EXPECT_EQ(row.cpuPercent, 0);
        EXPECT_EQ(row.perfPercent, 0);
        EXPECT_EQ(row.unusedSince, noon);
    }
}

TEST_F(UsageTrackerTest, keepsOrderAndSamples) {
    const std::vector<ProcSample> samples{sampleOf(30), sampleOf(10), sampleOf(20)};
    const auto rows = rowsOf(samples, noon);
    ASSERT_EQ(rows.size(), 3U);
    for (std::size_t each = 0; each < 3; ++each) {
        EXPECT_EQ(rows[each].sample, samples[each]);
        EXPECT_EQ(rows[each].project, std::nullopt);
        EXPECT_EQ(rows[each].claudeSession, std::nullopt);
    }
}

TEST_F(UsageTrackerTest, ratesAreOverTheRealInterval) {
    auto sample = sampleOf(10, second);
    sample.perfTimeNanos = 0;
    update(sample, noon);
    sample.cpuTimeNanos += 6 * second;
    sample.perfTimeNanos += second;
    const auto row = update(sample, noon + Seconds{4});
    EXPECT_DOUBLE_EQ(row.cpuPercent, 150);
    EXPECT_DOUBLE_EQ(row.perfPercent, 25);
    EXPECT_EQ(row.unusedSince, noon + Seconds{4});
}

TEST_F(UsageTrackerTest, exactlyOnePercentIsNotBusy) {
    update(sampleOf(10), noon);
    const auto row = update(sampleOf(10, second / 100), noon + Seconds{1});
    EXPECT_EQ(row.cpuPercent, 1.0);
    EXPECT_EQ(row.unusedSince, noon);
}

TEST_F(UsageTrackerTest, slightlyMoreThanOnePercentIsBusy) {
    update(sampleOf(10), noon);
    const auto row = update(sampleOf(10, second / 10000 * 101), noon + Seconds{1});
    EXPECT_DOUBLE_EQ(row.cpuPercent, 1.01);
    EXPECT_EQ(row.unusedSince, noon + Seconds{1});
}

TEST_F(UsageTrackerTest, performanceTimeAloneMakesNobodyBusy) {
    auto sample = sampleOf(10);
    update(sample, noon);
    sample.perfTimeNanos = second;
    const auto row = update(sample, noon + Seconds{1});
    EXPECT_DOUBLE_EQ(row.perfPercent, 100);
    EXPECT_EQ(row.unusedSince, noon);
}

TEST_F(UsageTrackerTest, idleProcessKeepsItsLastBusyDate) {
    update(sampleOf(10), noon);
    update(sampleOf(10, second), noon + Seconds{2});
    EXPECT_EQ(update(sampleOf(10, second), noon + Seconds{4}).unusedSince, noon + Seconds{2});
    EXPECT_EQ(update(sampleOf(10, second), noon + Seconds{6}).unusedSince, noon + Seconds{2});
}

TEST_F(UsageTrackerTest, twoReadingsAtOneTimeAreIdle) {
    update(sampleOf(10), noon);
    update(sampleOf(10), noon + Seconds{2});
    const auto row = update(sampleOf(10, second), noon + Seconds{2});
    EXPECT_EQ(row.cpuPercent, 0);
    EXPECT_EQ(row.perfPercent, 0);
    EXPECT_EQ(row.unusedSince, noon);
}

TEST_F(UsageTrackerTest, aClockThatWentBackGivesNoRates) {
    update(sampleOf(10), noon);
    const auto row = update(sampleOf(10, second), noon - Seconds{2});
    EXPECT_EQ(row.cpuPercent, 0);
    EXPECT_EQ(row.unusedSince, noon);
    // The next interval counts from the earlier date.
    EXPECT_DOUBLE_EQ(update(sampleOf(10, 2 * second), noon).cpuPercent, 50);
}

TEST_F(UsageTrackerTest, aClockThatIsSetMakesNobodyOlder) {
    for (const double hours : {26.0, -26.0}) {
        const Seconds by{3600 * hours};
        UsageTracker kept(*host.host.applications);
        kept.update({sampleOf(10)}, noon);
        kept.update({sampleOf(10, second)}, noon + Seconds{2});
        kept.clockWasSet(by);
        const auto row = kept.update({sampleOf(10, second + second / 100)}, noon + Seconds{4} + by).front();
        EXPECT_DOUBLE_EQ(row.cpuPercent, 0.5);
        EXPECT_EQ(row.unusedSince, noon + Seconds{2} + by);
    }
}

TEST_F(UsageTrackerTest, aReusedPidIsNew) {
    update(sampleOf(10), noon);
    auto other = sampleOf(10, 50 * second);
    other.startTime = start + Seconds{5};
    const auto row = update(other, noon + Seconds{2});
    EXPECT_EQ(row.cpuPercent, 0);
    EXPECT_EQ(row.perfPercent, 0);
    EXPECT_EQ(row.unusedSince, noon + Seconds{2});
}

TEST_F(UsageTrackerTest, aCounterThatWentDownGivesNoRateOfItsOwn) {
    auto sample = sampleOf(10, 5 * second);
    update(sample, noon);
    sample.cpuTimeNanos = second;
    sample.perfTimeNanos = 6 * second;
    const auto row = update(sample, noon + Seconds{2});
    EXPECT_EQ(row.cpuPercent, 0);
    EXPECT_DOUBLE_EQ(row.perfPercent, 50);
    EXPECT_EQ(row.unusedSince, noon);
}

TEST_F(UsageTrackerTest, noSamplesForgetEveryProcess) {
    update(sampleOf(10), noon);
    EXPECT_THAT(rowsOf({}, noon + Seconds{2}), IsEmpty());
    EXPECT_EQ(update(sampleOf(10, second), noon + Seconds{4}).unusedSince, noon + Seconds{4});
}

TEST_F(UsageTrackerTest, aProcessThatOneReadingMissedIsNewAgain) {
    rowsOf({sampleOf(10), sampleOf(11)}, noon);
    rowsOf({sampleOf(11)}, noon + Seconds{2});
    const auto rows = rowsOf({sampleOf(10, second), sampleOf(11)}, noon + Seconds{4});
    EXPECT_EQ(rows[0].cpuPercent, 0);
    EXPECT_EQ(rows[0].unusedSince, noon + Seconds{4});
    EXPECT_EQ(rows[1].unusedSince, noon);
}

TEST_F(UsageTrackerTest, everyRowOfARepeatedPidIsComparedWithTheReadingBefore) {
    update(sampleOf(10), noon);
    const auto rows = rowsOf({sampleOf(10, second), sampleOf(10, 2 * second)}, noon + Seconds{1});
    EXPECT_DOUBLE_EQ(rows[0].cpuPercent, 100);
    EXPECT_DOUBLE_EQ(rows[1].cpuPercent, 200);
    EXPECT_DOUBLE_EQ(update(sampleOf(10, 3 * second), noon + Seconds{2}).cpuPercent, 100);
}

TEST_F(UsageTrackerTest, anyOrderOfSamplesGivesTheSameRows) {
    std::mt19937 random(23);
    UsageTracker other(*host.host.applications);
    std::map<Pid, ProcSample> living;
    for (int tick = 0; tick < 60; ++tick) {
        const Date now = noon + Seconds{2.0 * tick};
        const auto touched = static_cast<Pid>(random() % 40 + 2);
        if (random() % 3 == 0) {
            living.erase(touched);
        } else {
            auto& sample = living.try_emplace(touched, sampleOf(touched)).first->second;
            if (random() % 4 == 0) sample.startTime = now;
            sample.cpuTimeNanos += random() % second;
        }
        std::vector<ProcSample> ascending;
        for (const auto& [pid, sample] : living) ascending.push_back(sample);
        auto shuffled = ascending;
        std::ranges::shuffle(shuffled, random);
        auto expected = rowsOf(ascending, now);
        auto rows = other.update(std::move(shuffled), now);
        std::ranges::sort(rows, {}, &ProcRow::id);
        ASSERT_EQ(rows, expected);
    }
}

class UsageTrackerApps : public UsageTrackerTest {
protected:
    static constexpr auto mail = "/Applications/Mail.app";
    static ProcSample mailSample(Pid pid = 10, std::uint64_t cpu = 0) {
        return sampleOf(pid, cpu, "/Applications/Mail.app/Contents/MacOS/Mail");
    }
};

TEST_F(UsageTrackerApps, rowCarriesItsApplication) {
    world.appIDs[mail] = "com.example.mail";
    const auto rows = rowsOf({mailSample(), sampleOf(11)}, noon);
    EXPECT_EQ(rows[0].appPath, Text(mail));
    EXPECT_EQ(rows[0].appID, Text("com.example.mail"));
    EXPECT_EQ(rows[1].appPath, std::nullopt);
    EXPECT_EQ(rows[1].appID, std::nullopt);
}

TEST_F(UsageTrackerApps, identifierIsAskedForOnce) {
    world.appIDs[mail] = "com.example.mail";
    rowsOf({mailSample(10), mailSample(11)}, noon);
    world.appIDs[mail] = "changed";
    EXPECT_EQ(update(mailSample(12), noon + Seconds{2}).appID, Text("com.example.mail"));
    EXPECT_EQ(world.timesAsked("bundleIdentifier /Applications/Mail.app"), 1U);
}

TEST_F(UsageTrackerApps, aBundleWithoutIdentifierIsAskedOnce) {
    update(mailSample(), noon);
    world.appIDs[mail] = "late";
    EXPECT_EQ(update(mailSample(), noon + Seconds{2}).appID, std::nullopt);
    EXPECT_EQ(update(mailSample(11), noon + Seconds{4}).appID, std::nullopt);
    EXPECT_EQ(world.timesAsked("bundleIdentifier /Applications/Mail.app"), 1U);
}

TEST_F(UsageTrackerApps, activationsMoveWithTheClockThatIsSet) {
    const std::string mail = "/Applications/Mail.app";
    const auto sample = sampleOf(10, 0, mail + "/Contents/MacOS/Mail");
    update(sample, noon);
    tracker.noteActivation(mail, noon + Seconds{1});
    tracker.clockWasSet(Seconds{86'400});
    EXPECT_EQ(update(sample, noon + Seconds{86'402}).unusedSince, noon + Seconds{86'401});
}

TEST_F(UsageTrackerApps, anApplicationThatNeverCameToTheFrontStaysSo) {
    const auto sample = sampleOf(10, 0, "/Applications/Mail.app/Contents/MacOS/Mail");
    update(sample, noon);
    tracker.clockWasSet(Seconds{86'400});
    EXPECT_EQ(update(sample, noon + Seconds{86'402}).unusedSince, noon + Seconds{86'400});
}

TEST_F(UsageTrackerApps, activationCountsForAllProcessesOfTheBundle) {
    const std::vector<ProcSample> samples{
        mailSample(10), sampleOf(11, 0, "/Applications/Mail.app/Contents/Helpers/Web.app/Contents/MacOS/Web"),
        sampleOf(12)};
    rowsOf(samples, noon);
    tracker.noteActivation(mail, noon + Seconds{1});
    const auto rows = rowsOf(samples, noon + Seconds{2});
    EXPECT_EQ(rows[0].unusedSince, noon + Seconds{1});
    EXPECT_EQ(rows[1].unusedSince, noon + Seconds{1});
    EXPECT_EQ(rows[2].unusedSince, noon);
}

TEST_F(UsageTrackerApps, anEarlierActivationChangesNothing) {
    tracker.noteActivation(mail, noon - Seconds{1});
    EXPECT_EQ(update(mailSample(), noon).unusedSince, noon);
}

TEST_F(UsageTrackerApps, activationBeforeTheFirstReadingHoldsLater) {
    tracker.noteActivation(mail, noon + Seconds{3});
    EXPECT_EQ(update(mailSample(), noon).unusedSince, noon + Seconds{3});
}

TEST_F(UsageTrackerApps, theLatestCallHoldsWhateverTheDatesSay) {
    update(mailSample(), noon);
    tracker.noteActivation(mail, noon + Seconds{8});
    tracker.noteActivation(mail, noon + Seconds{1});
    EXPECT_EQ(update(mailSample(), noon + Seconds{10}).unusedSince, noon + Seconds{1});
}

TEST_F(UsageTrackerApps, aProcessOutsideOfBundlesCannotBeActivated) {
    tracker.noteActivation("/opt/tool", noon + Seconds{1});
    tracker.noteActivation("", noon + Seconds{1});
    update(sampleOf(11), noon);
    EXPECT_EQ(update(sampleOf(11), noon + Seconds{2}).unusedSince, noon);
}

TEST_F(UsageTrackerApps, activationMakesNobodyBusy) {
    update(mailSample(), noon);
    tracker.noteActivation(mail, noon + Seconds{1});
    update(mailSample(), noon + Seconds{2});
    tracker.noteActivation(mail, noon - Seconds{9});
    EXPECT_EQ(update(mailSample(), noon + Seconds{4}).unusedSince, noon);
}

TEST_F(UsageTrackerApps, applicationIsAskedForAtTheFirstTwoReadingsOfALife) {
    for (int tick = 0; tick < 5; ++tick) rowsOf({mailSample(10), sampleOf(11)}, noon + Seconds{2.0 * tick});
    EXPECT_EQ(world.timesAsked("bundlePath 10"), 2U);
    EXPECT_EQ(world.timesAsked("bundlePath 11"), 2U);
    auto other = mailSample(10);
    other.startTime = start + Seconds{9};
    for (int tick = 5; tick < 9; ++tick) update(other, noon + Seconds{2.0 * tick});
    EXPECT_EQ(world.timesAsked("bundlePath 10"), 4U);
}

TEST_F(UsageTrackerApps, aProcessThatMovedIntoItsScopeAfterItsStartIsFound) {
    EXPECT_EQ(update(sampleOf(11), noon).appPath, std::nullopt);
    world.appScopes[11] = "/Applications/Editor.app";
    for (int tick = 1; tick < 4; ++tick) {
        EXPECT_EQ(update(sampleOf(11), noon + Seconds{2.0 * tick}).appPath, Text("/Applications/Editor.app"));
    }
}

TEST_F(UsageTrackerApps, anotherExecutableIsAskedForAnew) {
    for (int tick = 0; tick < 4; ++tick) update(sampleOf(10), noon + Seconds{2.0 * tick});
    EXPECT_EQ(update(mailSample(10), noon + Seconds{8}).appPath, Text(mail));
    EXPECT_EQ(update(mailSample(10), noon + Seconds{10}).appPath, Text(mail));
    EXPECT_EQ(world.timesAsked("bundlePath 10"), 3U);
}

TEST_F(UsageTrackerApps, rowsOfOneApplicationShareItsText) {
    const auto rows = rowsOf({mailSample(10), mailSample(11)}, noon);
    EXPECT_EQ(rows[0].appPath->view().data(), rows[1].appPath->view().data());
}

TEST_F(UsageTrackerApps, aLoweredProcessThatTurnsBusyIsToBeRestored) {
    update(sampleOf(10), noon);
    const std::map<Pid, Lowered> lowered{{10, {.start = start, .at = noon + Seconds{1}}}};
    EXPECT_EQ(Priority::review(lowered, rowsOf({sampleOf(10)}, noon + Seconds{2})), Priority::Review{});
    EXPECT_THAT(Priority::review(lowered, rowsOf({sampleOf(10, second)}, noon + Seconds{4})).restore, ElementsAre(10));
}

TEST_F(UsageTrackerApps, aLoweredApplicationThatComesToTheFrontIsToBeRestored) {
    update(mailSample(), noon);
    const std::map<Pid, Lowered> lowered{{10, {.start = start, .at = noon + Seconds{1}}}};
    EXPECT_EQ(Priority::review(lowered, rowsOf({mailSample()}, noon + Seconds{2})), Priority::Review{});
    tracker.noteActivation(mail, noon + Seconds{3});
    EXPECT_THAT(Priority::review(lowered, rowsOf({mailSample()}, noon + Seconds{4})).restore, ElementsAre(10));
}

}  // namespace
}  // namespace tolvane
