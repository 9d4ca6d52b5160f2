#include <gmock/gmock.h>

#include <sstream>

#include "core/history/Moment.h"
#include "core/json/Encode.h"
#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// What is left of a day when clocks, files and machines misbehave.
struct HistoryOverTimeTest : ModelTest {
    static constexpr const char* file = "Tolvane/history.jsonl";

    std::string content() const { return folder.read(file); }
    void addPrograms() {
        world.memorySize = 64 * GiB;
        for (Pid pid = 100; pid < 140; ++pid) {
            auto& process = world.add(pid, "program" + std::to_string(pid));
            process.usage->footprint = static_cast<std::uint64_t>(pid) * MiB;
        }
    }
    /// The line of one moment, as written by versions that know no optional fields.
    std::string line(Date date) const {
        std::ostringstream text;
        text.precision(17);
        text << R"({"date":)" << date.time_since_epoch().count()
             << R"(,"total":17179869184,"used":8589934592,"compressed":0,"swapUsed":0,"pressure":1,"cpu":0.25,)"
             << R"("cores":8,"holders":[]})" << '\n';
        return text.str();
    }
    void restart() {
        model.reset();
        start();
    }
    /// Expects another tick to run and its sample to arrive.
    void expectTicksGoOn() {
        const auto before = ticks();
        clock.advance(60s);
        EXPECT_GT(ticks(), before);
        EXPECT_EQ(model->snapshot->date, clock.now());
        EXPECT_EQ(model->historyFor({100}).empty(), world.find(100) == nullptr);
    }
};

TEST_F(HistoryOverTimeTest, aDayIsThereAfterARestartByteForByte) {
    addPrograms();
    start();
    clock.advance(86'400s);
    const auto moments = *model->moments;
    const auto before = content();
    ASSERT_THAT(moments, SizeIs(1441));
    restart();
    EXPECT_EQ(*model->moments, moments);
    EXPECT_EQ(content(), before);
}

TEST_F(HistoryOverTimeTest, aRestartTrimsTheDayAndLeavesTheRestAsItStood) {
    addPrograms();
    start();
    clock.advance(Seconds{30.0 * 3600});
    model.reset();
    const auto before = content();
    EXPECT_EQ(std::ranges::count(before, '\n'), 1801);
    clock.jumpTo(clock.now() + 10s);
    start();
    const auto after = content();
    EXPECT_EQ(std::ranges::count(after, '\n'), 1440);
    EXPECT_TRUE(before.ends_with(after));
    EXPECT_THAT(*model->moments, SizeIs(1440));
    EXPECT_LE(clock.now() - model->moments->front().date, 86'400s);
}

TEST_F(HistoryOverTimeTest, linesOfAnOlderVersionAreJudgedAsFarAsTheyGo) {
    std::string lines;
    for (int minute = 20; minute > 0; --minute) lines += line(clock.now() - Seconds{60.0 * minute});
    folder.write(file, lines);
    world.swapUsage = SwapUsage{.total = 16 * GiB, .used = 600 * MiB};
    start();
    EXPECT_EQ(*model->swapGrowth, std::int64_t{600 * MiB});
    EXPECT_EQ(*model->readBack, std::nullopt);
    EXPECT_TRUE(content().starts_with(lines));
    expectTicksGoOn();
}

TEST_F(HistoryOverTimeTest, momentsOfAClockThatRanAheadWaitForTheirTime) {
    folder.write(file, line(clock.now() + 3600s));
    addPrograms();
    start();
    EXPECT_THAT(*model->moments, SizeIs(1));
    EXPECT_EQ(*model->swapGrowth, std::nullopt);
    expectTicksGoOn();
    EXPECT_THAT(*model->moments, SizeIs(1));
    clock.advance(3660s);
    EXPECT_GE(model->moments->size(), 2U);
}

TEST_F(HistoryOverTimeTest, datesBeyondAllReasonStopNothing) {
    folder.write(file, R"({"date":1e300,"total":1,"used":1,"compressed":1,"swapUsed":18446744073709551615,)"
                       R"("pressure":4,"cpu":1e300,"cores":9223372036854775807,"holders":[],"swapIns":1})"
                       "\n" +
                           line(Date{Seconds{-1e300}}) + line(clock.now() - 700s));
    addPrograms();
    start();
    EXPECT_THAT(*model->moments, SizeIs(3));
    expectTicksGoOn();
}

TEST_F(HistoryOverTimeTest, damagedLinesArePassedOverAndGo) {
    const auto good = line(clock.now() - 120s);
    folder.write(file, "{\n" + good + "null\n[]\n{\"date\":true}\n\"text\"\n" + good.substr(0, 40) + "\n\n");
    start();
    EXPECT_THAT(*model->moments, SizeIs(2));
    EXPECT_TRUE(content().starts_with(good));
    EXPECT_EQ(std::ranges::count(content(), '\n'), 2);
    expectTicksGoOn();
}

// A hundredth of ten million lines; the full number takes a hundred times as long.
TEST_F(HistoryOverTimeTest, aVeryLongFileIsTrimmedToTheDay) {
    constexpr int lines = 100'000;
    std::string text;
    for (int index = lines; index > 0; --index) text += line(clock.now() - Seconds{60.0 * index});
    folder.write(file, text);
    start();
    EXPECT_THAT(*model->moments, SizeIs(1441));
    EXPECT_EQ(std::ranges::count(content(), '\n'), 1441);
    expectTicksGoOn();
}

TEST_F(HistoryOverTimeTest, aVeryLongFileOfOneDayIsHeldWhole) {
    constexpr int lines = 100'000;
    std::string text;
    for (int index = lines; index > 0; --index) text += line(clock.now() - Seconds{0.8 * index});
    folder.write(file, text);
    addPrograms();
    start();
    // The last line is too recent for the start to add another.
    EXPECT_THAT(*model->moments, SizeIs(lines));
    expectTicksGoOn();
}

TEST_F(HistoryOverTimeTest, aClockThatGoesBackAnHourLosesNothing) {
    addPrograms();
    start();
    clock.advance(7200s);
    const auto count = model->moments->size();
    clock.jumpTo(clock.now() - 3600s);
    expectTicksGoOn();
    EXPECT_EQ(model->moments->size(), count);
    clock.advance(3600s);
    EXPECT_GT(model->moments->size(), count);
    EXPECT_TRUE(std::ranges::is_sorted(*model->moments, {}, &Moment::date));
}

TEST_F(HistoryOverTimeTest, aClockThatGoesForwardADayStartsTheDayAnew) {
    addPrograms();
    start();
    clock.advance(7200s);
    clock.jumpTo(clock.now() + 90'000s);
    expectTicksGoOn();
    EXPECT_THAT(*model->moments, SizeIs(1));
    EXPECT_EQ(*model->swapGrowth, std::nullopt);
}

TEST_F(HistoryOverTimeTest, aNightsSleepIsAGapAndNothingElse) {
    addPrograms();
    burn(100, 90, 60s);
    start();
    for (int minute = 0; minute < 30; ++minute) {
        burn(100, 90, 60s);
        clock.advance(60s);
    }
    ASSERT_THAT(*model->suggestions, Not(IsEmpty()));
    clock.jumpTo(clock.now() + 8h);
    expectTicksGoOn();
    EXPECT_THAT(*model->moments, SizeIs(32));
    for (const auto& each : *model->suggestions) EXPECT_NE(each.kind, Suggestion::Kind::busy) << each.evidence;
    EXPECT_GE(model->loadHistory->size(), 1U);
}

}  // namespace
}  // namespace tolvane
