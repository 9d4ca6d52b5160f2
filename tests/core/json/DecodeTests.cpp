#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "core/history/Moment.h"
#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {
namespace {

using json::decode;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string idText = "0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF";

std::string entryWith(std::string_view more) {
    return R"({"id":")" + idText +
           R"(","date":1,"ruleName":"r","subject":"s","outcome":"o","memory":60,"dryRun":true)" + std::string(more) +
           "}";
}

template <typename Value>
std::string errorOf(std::string_view text) {
    const auto result = decode<Value>(text);
    return result ? "none" : result.failure().text();
}

std::string ruleWith(std::string_view target) {
    return R"({"id":")" + idText + R"(","name":"n","enabled":true,"dryRun":true,"action":"quit","target":)" +
           std::string(target) + "}";
}

TEST(Decode, readsKeysInAnyOrderAndIgnoresOthers) {
    const auto entry = decode<ActivityEntry>(R"( { "dryRun" : true , "x" : {"memory":[1,{"a":null}],"s":"\u00e9"},
        "memory":60,"outcome":"o","subject":"s","ruleName":"r\/s","date":-1.5e0,"id":")" +
                                             idText + "\"}\r\n");
    ASSERT_TRUE(entry) << entry.failure().text();
    EXPECT_EQ(*entry, (ActivityEntry{.id = *UUID::parse(idText),
                                     .date = Date{Seconds{-1.5}},
                                     .ruleName = "r/s",
                                     .subject = "s",
                                     .outcome = "o",
                                     .memory = 60,
                                     .dryRun = true}));
}

TEST(Decode, readsEscapedKeys) {
    EXPECT_TRUE(
        decode<ActivityEntry>(R"({"\u0069d":")" + idText +
                              R"(","date":1,"ruleName":"","subject":"","outcome":"","memory":1,"dryRun":true})"));
}

TEST(Decode, takesTheLastOfARepeatedKey) {
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"memory":61,"memory":62)"))->memory, 62U);
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"freed":5,"freed":null)"))->freed, std::nullopt);
    EXPECT_EQ(decode<Moment>(R"({"date":1,"total":1,"used":1,"compressed":1,"swapUsed":1,"pressure":1,"cpu":0,"cores":1,
        "holders":[{"key":"a","title":"a","memory":1,"compressed":1,"cpu":1}],"holders":[]})")
                  ->holders.size(),
              0U);
}

TEST(Decode, takesNullForAbsentOnlyUnderOptionalKeys) {
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"subjectKey":null)"))->subjectKey, std::nullopt);
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"memory":null)")), "memory: not an integer");
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"ruleName":null)")), "ruleName: not a string");
}

TEST(Decode, namesTheFirstKeyThatIsMissing) {
    EXPECT_EQ(errorOf<ActivityEntry>("{}"), "id: missing");
    EXPECT_EQ(errorOf<ActivityEntry>(R"({"id":")" + idText + "\"}"), "date: missing");
}

TEST(Decode, takesWholeDecimalsForIntegers) {
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"memory":60.0)"))->memory, 60U);
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"memory":6e1)"))->memory, 60U);
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"memory":-0.0)"))->memory, 0U);
    EXPECT_EQ(decode<ActivityEntry>(entryWith(R"(,"memory":18446744073709551615)"))->memory,
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"memory":60.5)")), "memory: not an integer");
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"memory":-1)")), "memory: a number out of range");
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"memory":18446744073709551616)")), "memory: a number out of range");
    EXPECT_EQ(errorOf<ActivityEntry>(entryWith(R"(,"memory":"60")")), "memory: not an integer");
}

TEST(Decode, keepsSignedLimits) {
    using Numbers = std::vector<std::int64_t>;
    EXPECT_THAT(*decode<Numbers>("[-9223372036854775808,9223372036854775807,-9223372036854775808.0]"),
                ElementsAre(INT64_MIN, INT64_MAX, INT64_MIN));
    EXPECT_FALSE(decode<Numbers>("[9223372036854775808]"));
    EXPECT_FALSE(decode<Numbers>("[-9223372036854777856]"));
    EXPECT_THAT(*decode<std::vector<std::int32_t>>("[2147483647]"), ElementsAre(INT32_MAX));
    EXPECT_FALSE(decode<std::vector<std::int32_t>>("[2147483648]"));
}

TEST(Decode, readsUUIDsInEitherCase) {
    const auto lower = decode<std::vector<UUID>>(R"(["0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0ff"])");
    EXPECT_EQ(lower->front().text(), idText);
    for (const char* text : {"", "0f1e2d3c4b5a49788695a4b3c2d1e0ff", "0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0fg",
                             "{0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0}"}) {
        EXPECT_EQ(errorOf<std::vector<UUID>>("[\"" + std::string(text) + "\"]"), "[0]: not a UUID");
    }
}

TEST(Decode, saysWhereInAListOfRecords) {
    const auto good = ruleWith(R"({"emptyClaudeSession":{}})");
    const auto bad = ruleWith(R"({"agentSession":{"names":["claude",7],"onlyWithoutPrompt":true}})");
    EXPECT_EQ(errorOf<std::vector<Rule>>("[" + good + "," + bad + "]"),
              "[1].target.agentSession.names[1]: not a string");
}

TEST(Decode, refusesAnUnknownAction) {
    auto text = ruleWith(R"({"command":{"patterns":[]}})");
    text.replace(text.find("quit"), 4, "zap!");
    EXPECT_EQ(errorOf<Rule>(text), "action: unknown value \"zap!\"");
}

TEST(Decode, readsEachTarget) {
    using Targets = std::vector<RuleTarget>;
    EXPECT_THAT(*decode<Targets>(R"([{"app":{"bundleID":"b","name":"n"}},{"command":{"patterns":["a","b"]}},
        {"emptyClaudeSession":{}},{"agentSession":{"onlyWithoutPrompt":true,"names":["c"]}}])"),
                ElementsAre(RuleTarget(AppTarget{"b", "n"}), RuleTarget(CommandTarget{{"a", "b"}}),
                            RuleTarget(EmptyClaudeSessionTarget{}), RuleTarget(AgentSessionTarget{{"c"}, true})));
}

TEST(Decode, aTargetHasExactlyOneKnownKey) {
    const std::string expected = "target: Invalid number of keys found, expected one.";
    EXPECT_EQ(errorOf<Rule>(ruleWith("{}")), expected);
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"container":{}})")), expected);
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"app":{"bundleID":"b","name":"n"},"command":{"patterns":[]}})")), expected);
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"app":{},"command":{}})")), expected);
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"later":[{}],"command":{"patterns":[]},"more":1})")), "none");
    EXPECT_EQ(decode<Rule>(ruleWith(R"({"command":{"patterns":["a"]},"command":{"patterns":["b"]}})"))->target,
              RuleTarget(CommandTarget{{"b"}}));
}

TEST(Decode, everyKeyWithinATargetIsRequired) {
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"agentSession":{"names":[]}})")),
              "target.agentSession.onlyWithoutPrompt: missing");
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"app":{"bundleID":"b"}})")), "target.app.name: missing");
    EXPECT_EQ(errorOf<Rule>(ruleWith(R"({"command":null})")), "target.command: not an object");
    EXPECT_EQ(errorOf<Rule>(ruleWith("7")), "target: not an object");
}

TEST(Decode, refusesDamagedDocuments) {
    for (const char* text : {"", " ", "{", "[", "[}", "{\"a\"}", "[1", "[1 2]", "[1,]", "nul", "[1]]", "[1] 2", "\"x\"",
                             "[01]", "[1.]", "[+1]", "[NaN]", "[1e999]"}) {
        EXPECT_FALSE(decode<std::vector<double>>(text)) << text;
    }
    for (const char* text : {"[\"\x01\"]", "[\"\xFF\"]", "[\"\\x\"]", "[\"\\ud800\"]", "[\"a]", "['a']"}) {
        EXPECT_FALSE(decode<std::vector<std::string>>(text)) << text;
    }
    for (const char* value : {"tru", "nulls", "01", "{\"a\":}", "[1,]", "\"\\q\"", "{1:2}", "-"}) {
        EXPECT_FALSE(decode<ActivityEntry>(entryWith(std::string(",\"x\":") + value))) << value;
    }
}

TEST(Decode, passesOverAByteOrderMark) { EXPECT_TRUE(decode<std::vector<double>>("\xEF\xBB\xBF[1]")); }

TEST(Decode, passesOverUnknownValuesOfEveryKind) {
    for (const char* value :
         {"true", "null", "1e5", "123456789012345678901234567890", "\"\\ud83d\\ude42\"", "[]", "{}"}) {
        EXPECT_TRUE(decode<ActivityEntry>(entryWith(std::string(",\"x\":") + value))) << value;
    }
}

TEST(Decode, endlessNestingIsAnError) {
    const std::string deep = ",\"x\":" + std::string(100'000, '[') + std::string(100'000, ']');
    EXPECT_THAT(errorOf<ActivityEntry>(entryWith(deep)), HasSubstr("nested too deeply"));
    EXPECT_FALSE(decode<std::vector<double>>(std::string(1'000'000, '[')));
}

// The text of any record, in either style, reads back as an equal record.

class Arbitrary {
public:
    explicit Arbitrary(unsigned seed) : random_(seed) {}

    std::uint64_t number() { return random_() >> (random_() % 64); }
    bool truth() { return random_() % 2 == 0; }
    double decimal() {
        const auto value = std::bit_cast<double>(random_());
        return std::isfinite(value) ? value : 0.1;
    }
    std::string text() {
        static constexpr std::array pieces = {"a", "/", "\"", "\\", "\n", "\x01", "é", "🙂", " ", "\u2028", "\x7f"};
        std::string result(truth() ? "" : std::string(1, '\0'));
        while (random_() % 8 != 0) result += pieces[random_() % pieces.size()];
        return result;
    }
    UUID id() {
        UUID id;
        for (auto& byte : id.bytes) byte = static_cast<std::uint8_t>(random_());
        return id;
    }
    Date date() { return Date{Seconds{decimal()}}; }
    template <typename Make>
    auto maybe(const Make& make) {
        return truth() ? std::optional(make()) : std::nullopt;
    }
    template <typename Make>
    auto several(const Make& make) {
        std::vector<decltype(make())> all(random_() % 4);
        for (auto& one : all) one = make();
        return all;
    }

    RuleTarget target() {
        switch (random_() % 4) {
            case 0:
                return AppTarget{text(), text()};
            case 1:
                return CommandTarget{several([&] { return text(); })};
            case 2:
                return EmptyClaudeSessionTarget{};
            default:
                return AgentSessionTarget{several([&] { return text(); }), truth()};
        }
    }
    Rule rule() {
        const auto limit = [&] { return static_cast<std::int64_t>(random_()); };
        return {.id = id(),
                .name = text(),
                .enabled = truth(),
                .dryRun = truth(),
                .target = target(),
                .unusedMinutes = maybe(limit),
                .memoryMB = maybe(limit),
                .action = json::Texts<RuleAction>::texts[random_() % 5].first,
                .onlyWhenTight = maybe([&] { return truth(); })};
    }
    ActivityEntry entry() {
        const auto size = [&] { return number(); };
        return {.id = id(),
                .date = date(),
                .ruleName = text(),
                .subject = text(),
                .outcome = text(),
                .memory = number(),
                .dryRun = truth(),
                .subjectKey = maybe([&] { return Text(text()); }),
                .compressed = maybe(size),
                .freed = maybe(size),
                .freedCompressed = maybe(size)};
    }
    Holder holder() {
        return {.key = text(),
                .title = text(),
                .appPath = maybe([&] { return text(); }),
                .memory = number(),
                .compressed = number(),
                .cpu = decimal(),
                .started = maybe([&] { return date(); }),
                .swapIns = maybe([&] { return number(); })};
    }
    Moment moment() {
        return {.date = date(),
                .total = number(),
                .used = number(),
                .compressed = number(),
                .swapUsed = number(),
                .pressure = static_cast<std::int64_t>(number()),
                .cpu = decimal(),
                .cores = -static_cast<std::int64_t>(number() >> 1U),
                .holders = several([&] { return holder(); }),
                .performance = maybe([&] { return decimal(); }),
                .efficiency = maybe([&] { return decimal(); }),
                .swapIns = maybe([&] { return number(); })};
    }
    ParkedProject parked() {
        const auto texts = [&] { return several([&] { return text(); }); };
        return {.root = text(),
                .date = date(),
                .commands = several([&] { return ParkedCommand{text(), texts(), texts(), text()}; }),
                .containers = texts()};
    }

private:
    std::mt19937_64 random_;
};

template <typename Record>
void expectRoundTrip(const Record& record, json::Style style) {
    const auto text = json::encode(record, style);
    ASSERT_TRUE(text);
    const auto back = decode<Record>(*text);
    ASSERT_TRUE(back) << back.failure().text() << "\n" << *text;
    EXPECT_EQ(*back, record) << *text;
}

class RoundTrip : public ::testing::TestWithParam<json::Style> {};

TEST_P(RoundTrip, givesEqualRecords) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        Arbitrary arbitrary(seed);
        expectRoundTrip(arbitrary.several([&] { return arbitrary.rule(); }), GetParam());
        expectRoundTrip(arbitrary.entry(), GetParam());
        expectRoundTrip(arbitrary.moment(), GetParam());
        expectRoundTrip(arbitrary.several([&] { return arbitrary.parked(); }), GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(Styles, RoundTrip, ::testing::Values(json::Style::compact, json::Style::pretty),
                         [](const auto& info) { return info.param == json::Style::compact ? "compact" : "pretty"; });

/// A target's strings are read twice, so the bytes read exceed the length of the document.
TEST(Decode, aTargetOfManyPatternsIsReadWhole) {
    CommandTarget target;
    for (int number = 0; number < 20'000; ++number) {
        target.patterns.push_back("node_modules/.bin/tool" + std::to_string(number) + "/with \"quotes\"");
    }
    Rule rule;
    rule.target = target;
    const auto back = decode<Rule>(*json::encode(rule));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, rule);
}

TEST(Decode, stringsWithAndWithoutEscapesAreReadAlike) {
    const auto plain = decode<ActivityEntry>(entryWith(R"(,"subjectKey" : "a b" )"));
    const auto escaped = decode<ActivityEntry>(entryWith(R"(,"subjectKey" : "a\u0020b" )"));
    ASSERT_TRUE(plain && escaped);
    EXPECT_EQ(plain->subjectKey, Text("a b"));
    EXPECT_EQ(plain->subjectKey, escaped->subjectKey);
    EXPECT_FALSE(decode<ActivityEntry>(entryWith(R"(,"subjectKey":"a"b)")));
    EXPECT_FALSE(decode<ActivityEntry>(entryWith(R"(,"subjectKey":"a" "b")")));
    EXPECT_FALSE(decode<ActivityEntry>(entryWith(R"(,"subjectKey":")")));
    EXPECT_FALSE(decode<ActivityEntry>(entryWith(R"(,"subjectKey":[])")));
}

}  // namespace
}  // namespace tolvane
