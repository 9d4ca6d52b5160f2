#include "platform/linux/settings/PlistPreferences.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <limits>

#include "platform/linux/settings/PropertyList.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const std::string header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";

class PlistPreferencesTest : public ::testing::Test {
protected:
    PlistPreferences open() const { return PlistPreferences(folder.at("Tolvane/p.plist")); }
    void store(const std::string& dictionary) const {
        folder.write("Tolvane/p.plist", header + dictionary + "</plist>\n");
    }
    std::string stored() const { return folder.read("Tolvane/p.plist"); }
    mode_t rights(const std::string& name) const {
        struct stat facts{};
        ::stat(folder.at(name).c_str(), &facts);
        return facts.st_mode & 0777;
    }
    ino_t inode() const {
        struct stat facts{};
        ::stat(folder.at("Tolvane/p.plist").c_str(), &facts);
        return facts.st_ino;
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(PlistPreferencesTest, withoutAFileEverythingIsAbsent) {
    EXPECT_EQ(open().value("demo"), std::nullopt);
    EXPECT_FALSE(folder.has("Tolvane"));
}

TEST_F(PlistPreferencesTest, everyTypeComesBackInTheNextRun) {
    const PreferenceDates hidden{{"left|/home/ada/a & <b>", Date{Seconds{800'000'000}}}, {"é", distantFuture}};
    {
        PlistPreferences first = open();
        first.set("bool", false);
        first.set("int", std::int64_t{-5});
        first.set("bigInt", std::numeric_limits<std::int64_t>::max());
        first.set("double", 0.1 + 0.2);
        first.set("string", std::string("a & <b> \"c\"\né"));
        first.set("date", Date{Seconds{800'000'000}});
        first.set("dates", hidden);
        first.set("noDates", PreferenceDates{});
    }
    const PlistPreferences second = open();
    EXPECT_EQ(second.get<bool>("bool"), false);
    EXPECT_EQ(second.get<std::int64_t>("int"), -5);
    EXPECT_EQ(second.get<std::int64_t>("bigInt"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(second.get<double>("double"), 0.1 + 0.2);
    EXPECT_EQ(second.get<std::string>("string"), "a & <b> \"c\"\né");
    EXPECT_EQ(second.get<Date>("date"), Date{Seconds{800'000'000}});
    EXPECT_EQ(second.get<PreferenceDates>("dates"), hidden);
    EXPECT_EQ(second.get<PreferenceDates>("noDates"), PreferenceDates{});
}

TEST_F(PlistPreferencesTest, aDateIsExactInThisRunAndInWholeSecondsInTheNext) {
    PlistPreferences first = open();
    first.set("date", Date{Seconds{800'000'000.75}});
    first.set("before", Date{Seconds{-4.75}});
    EXPECT_EQ(first.get<Date>("date"), Date{Seconds{800'000'000.75}});
    EXPECT_EQ(open().get<Date>("date"), Date{Seconds{800'000'000}});
    EXPECT_EQ(open().get<Date>("before"), Date{Seconds{-5}});
}

TEST_F(PlistPreferencesTest, theFirstAndTheLastDateAreKept) {
    PlistPreferences first = open();
    first.set("past", distantPast);
    first.set("future", distantFuture);
    EXPECT_EQ(open().get<Date>("past"), distantPast);
    EXPECT_EQ(open().get<Date>("future"), distantFuture);
}

TEST_F(PlistPreferencesTest, aValueOfAnotherTypeCountsAsAbsent) {
    store("<dict><key>openInterval</key><string>5</string><key>warnSwapGrowth</key><integer>0</integer></dict>");
    const PlistPreferences preferences = open();
    EXPECT_EQ(preferences.get<std::int64_t>("openInterval"), std::nullopt);
    EXPECT_EQ(preferences.get<bool>("warnSwapGrowth"), std::nullopt);
}

TEST_F(PlistPreferencesTest, aDictionaryWithMoreThanDatesIsNoMapOfDates) {
    store(
        "<dict><key>hiddenSuggestions</key><dict><key>a</key><date>2026-05-09T06:13:20Z</date>"
        "<key>b</key><true/></dict></dict>");
    EXPECT_EQ(open().value("hiddenSuggestions"), std::nullopt);
}

TEST_F(PlistPreferencesTest, keysAndTypesOfOthersStay) {
    store(
        "<dict><key>list</key><array><integer>1</integer></array><key>bytes</key><data>AAEC</data>"
        "<key>mixed</key><dict><key>a</key><true/></dict><key>other</key><string>kept</string></dict>");
    open().set("demo", true);
    EXPECT_THAT(stored(), HasSubstr("<array>"));
    EXPECT_THAT(stored(), HasSubstr("AAEC"));
    EXPECT_THAT(stored(), HasSubstr("<key>mixed</key>"));
    EXPECT_EQ(open().get<std::string>("other"), "kept");
    EXPECT_EQ(open().get<bool>("demo"), true);
}

TEST_F(PlistPreferencesTest, whatSomebodyWroteMeanwhileStays) {
    PlistPreferences running = open();
    running.set("demo", true);
    store("<dict><key>byHand</key><integer>7</integer></dict>");
    running.set("rulesPaused", true);
    EXPECT_EQ(open().get<std::int64_t>("byHand"), 7);
    EXPECT_EQ(open().get<bool>("rulesPaused"), true);
}

TEST_F(PlistPreferencesTest, anEqualValueWritesNothing) {
    PlistPreferences preferences = open();
    preferences.set("demo", true);
    const auto before = inode();
    preferences.set("demo", true);
    EXPECT_EQ(inode(), before);
    preferences.set("demo", false);
    EXPECT_NE(inode(), before);
}

TEST_F(PlistPreferencesTest, folderAndFileAreForThisUserOnly) {
    open().set("demo", true);
    EXPECT_EQ(rights("Tolvane"), 0700U);
    EXPECT_EQ(rights("Tolvane/p.plist"), 0600U);
}

TEST_F(PlistPreferencesTest, aWriteLeavesNothingBeside) {
    open().set("demo", true);
    const std::filesystem::directory_iterator entries(folder.at("Tolvane"));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(PlistPreferencesTest, aLinkStaysALink) {
    const std::string kept = folder.write("dotfiles/p.plist", header + "<dict/></plist>");
    std::filesystem::create_directories(folder.at("Tolvane"));
    std::filesystem::create_symlink(kept, folder.at("Tolvane/p.plist"));
    open().set("demo", true);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.at("Tolvane/p.plist")));
    EXPECT_THAT(folder.read("dotfiles/p.plist"), HasSubstr("demo"));
}

class DamagedPreferences : public PlistPreferencesTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(DamagedPreferences, giveDefaultsAndAreKeptBeside) {
    folder.write("Tolvane/p.plist", GetParam());
    PlistPreferences preferences = open();
    EXPECT_EQ(preferences.value("demo"), std::nullopt);
    EXPECT_FALSE(folder.has("Tolvane/p.plist.damaged"));
    EXPECT_EQ(stored(), GetParam());

    preferences.set("demo", true);
    EXPECT_EQ(folder.read("Tolvane/p.plist.damaged"), GetParam());
    EXPECT_EQ(open().get<bool>("demo"), true);
}

INSTANTIATE_TEST_SUITE_P(EachKind, DamagedPreferences,
                         ::testing::Values("", "rubbish", std::string("\0\xff\xfe", 3), "{\"demo\": true}",
                                           header + "<dict><key>demo</key><tr", header + "<string>x</string></plist>",
                                           header + "<array/></plist>", "bplist00 and what follows"));

TEST_F(PlistPreferencesTest, aBottomlessListIsDamagedAndOverrunsNoStack) {
    std::string text = header;
    for (int level = 0; level < 400'000; ++level) text += "<array>";
    folder.write("Tolvane/p.plist", text);
    EXPECT_EQ(open().value("demo"), std::nullopt);
}

TEST_F(PlistPreferencesTest, nestingWithinTheLimitIsCarriedAlong) {
    std::string nested;
    for (int level = 0; level < 1'900; ++level) nested += "<array>";
    for (int level = 0; level < 1'900; ++level) nested += "</array>";
    store("<dict><key>deep</key>" + nested + "<key>demo</key><true/></dict>");
    PlistPreferences preferences = open();
    EXPECT_EQ(preferences.get<bool>("demo"), true);
    preferences.set("demo", false);
    EXPECT_THAT(stored(), HasSubstr("<key>deep</key>"));
}

TEST_F(PlistPreferencesTest, aFolderInTheFilesPlaceHarmsNothing) {
    std::filesystem::create_directories(folder.at("Tolvane/p.plist/x"));
    PlistPreferences preferences = open();
    preferences.set("demo", true);
    EXPECT_EQ(preferences.get<bool>("demo"), true);
}

TEST_F(PlistPreferencesTest, anUnwritablePlaceKeepsValuesForThisRun) {
    folder.write("Tolvane", "a file where the folder should be");
    PlistPreferences preferences = open();
    preferences.set("demo", true);
    EXPECT_EQ(preferences.get<bool>("demo"), true);
    EXPECT_EQ(open().value("demo"), std::nullopt);
}

TEST_F(PlistPreferencesTest, whatCouldNotBeWrittenGoesWithTheNextWrite) {
    folder.write("Tolvane", "in the way");
    PlistPreferences preferences = open();
    preferences.set("demo", true);
    std::filesystem::remove(folder.at("Tolvane"));
    preferences.set("rulesPaused", true);
    EXPECT_EQ(open().get<bool>("demo"), true);
    EXPECT_EQ(open().get<bool>("rulesPaused"), true);
}

TEST_F(PlistPreferencesTest, aNumberThatIsNoneIsKeptForThisRunOnly) {
    PlistPreferences preferences = open();
    preferences.set("ratio", std::numeric_limits<double>::infinity());
    EXPECT_EQ(preferences.get<double>("ratio"), std::numeric_limits<double>::infinity());
    EXPECT_THAT(stored(), Not(HasSubstr("ratio")));
}

}  // namespace tolvane::linuxhost
