#include "core/json/AtSight.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/storage/ActivityFields.h"

namespace tolvane {
namespace {

const std::string idText = "0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF";

std::string lineWith(std::string_view date, std::string_view memory = "60", std::string_view more = "") {
    return R"({"id":")" + idText + R"(","date":)" + std::string(date) +
           R"(,"ruleName":"r","subject":"s","outcome":"o","memory":)" + std::string(memory) + R"(,"dryRun":true)" +
           std::string(more) + "}";
}

std::optional<ActivityEntry> atSight(std::string_view line) {
    json::TextCache texts;
    ActivityEntry entry;
    return json::AtSight(line, texts).read(entry) ? std::optional(entry) : std::nullopt;
}

std::optional<ActivityEntry> decoded(std::string_view line) {
    auto entry = json::decode<ActivityEntry>(line);
    return entry ? std::optional(*entry) : std::nullopt;
}

class Lines {
public:
    ActivityEntry entry() {
        ActivityEntry entry;
        entry.id = UUID::random();
        entry.date = Date{Seconds{std::ldexp(static_cast<double>(draw(1U << 31U)), -static_cast<int>(draw(24)))}};
        entry.ruleName = text();
        entry.subject = text();
        entry.outcome = text();
        entry.memory = random_() >> draw(64);
        entry.dryRun = draw(2) == 0;
        if (draw(2) == 0) entry.subjectKey = text();
        if (draw(2) == 0) entry.compressed = random_() >> draw(64);
        if (draw(2) == 0) entry.freed = random_() >> draw(64);
        if (draw(2) == 0) entry.freedCompressed = draw(3);
        return entry;
    }

    /// Something is put in, taken out or changed, or nothing.
    std::string damaged(std::string line) {
        static constexpr std::string_view bits = "\"\\{}[],:.0123456789eE+- \t\r/untrufalse\x01\x1f\x7f\xC3\xA9";
        for (auto count = draw(4); count > 0 && !line.empty(); --count) {
            const auto place = draw(line.size());
            const char bit = bits[draw(bits.size())];
            switch (draw(4)) {
                case 0:
                    line[place] = bit;
                    break;
                case 1:
                    line.insert(line.begin() + static_cast<std::ptrdiff_t>(place), bit);
                    break;
                case 2:
                    line.erase(place, 1 + draw(3));
                    break;
                default:
                    line.resize(line.size() - draw(3));
            }
        }
        return line;
    }

private:
    std::uint64_t draw(std::uint64_t below) { return random_() % below; }

    Text text() {
        static const std::vector<std::string> known = {
            "",           "node",    "Idle Rails servers", "puma in shop",     "app:com.example.app",
            "a\\b",       "a\"b\"",  "caf\xC3\xA9",        "\xF0\x9F\x90\x98", "a/b",
            "line\nfeed", "seven77", "eight888",           "exactly fifteen",  "sixteen letters!",
            "\x7F"};
        return known[draw(known.size())];
    }

    std::mt19937_64 random_{11};
};

TEST(AtSight, readsWhatIsWritten) {
    const auto line = lineWith("785954400.123456", "18446744073709551615",
                               R"(,"subjectKey":"pid:7:1.5","compressed":0,"freed":1,"freedCompressed":2)");
    EXPECT_FALSE(atSight(line)) << "twenty digits are left to the decoder";
    const auto usual = lineWith("785954400.123456", "9999999999999999999",
                                R"(,"subjectKey":"pid:7:1.5","compressed":0,"freed":1,"freedCompressed":2)");
    ASSERT_TRUE(atSight(usual));
    EXPECT_EQ(atSight(usual), decoded(usual));
    EXPECT_EQ(atSight(usual)->memory, 9999999999999999999U);
}

TEST(AtSight, leavesFieldsThatAreMissingAbsent) {
    const auto entry = atSight(lineWith("1", "60", R"(,"freed":7)"));
    ASSERT_TRUE(entry);
    EXPECT_FALSE(entry->subjectKey);
    EXPECT_FALSE(entry->compressed);
    EXPECT_EQ(entry->freed, 7);
}

TEST(AtSight, readsDatesToTheLastBit) {
    for (const std::string_view date : {"0", "1", "0.1", "0.000000001", "785954400.12345672", "9007199254740993",
                                        "900719925474099.25", "123456789.1234567891", "1234567890123456789.5"}) {
        EXPECT_EQ(atSight(lineWith(date)), decoded(lineWith(date))) << date;
    }
}

TEST(AtSight, leavesEveryOtherFormToTheDecoder) {
    for (const auto& line : {lineWith("-1"),
                             lineWith("1e3"),
                             lineWith("1."),
                             lineWith(".5"),
                             lineWith("01"),
                             lineWith("1 "),
                             lineWith(""),
                             lineWith("1", "060"),
                             lineWith("1", "60.0"),
                             lineWith("1", "-1"),
                             lineWith("1", "60", R"(,"freed":null)"),
                             lineWith("1", "60", R"(,"other":1)"),
                             lineWith("1", "60", R"(,"subject":"t")"),
                             lineWith("1") + " ",
                             lineWith("1") + "\r",
                             " " + lineWith("1"),
                             lineWith("1") + lineWith("1"),
                             std::string(),
                             std::string("{"),
                             lineWith("1").substr(0, 40),
                             lineWith("1", "60", R"(,"subjectKey":"a\/b")"),
                             lineWith("1", "60", ",\"subjectKey\":\"a\x01\""),
                             lineWith("1", "60", R"(,"subjectKey":"open)"),
                             lineWith("1", "60", R"(,"freed":1,"compressed":2)")}) {
        EXPECT_FALSE(atSight(line)) << line;
    }
}

TEST(AtSight, neverSaysAnythingElseThanTheDecoder) {
    Lines lines;
    std::size_t read = 0;
    for (int count = 0; count < 20'000; ++count) {
        const auto line = lines.damaged(*json::encode(lines.entry()));
        const auto entry = atSight(line);
        if (!entry || !simdjson::validate_utf8(line)) continue;
        ++read;
        ASSERT_EQ(entry, decoded(line)) << line;
    }
    EXPECT_GT(read, 1000) << "else nothing was compared";
}

}  // namespace
}  // namespace tolvane
