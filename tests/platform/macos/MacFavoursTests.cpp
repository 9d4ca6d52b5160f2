// Preferences, property lists, folders, desktop services, the login item, cores.

#include "platform/macos/kernel/ActiveCores.h"
#include "platform/macos/session/MacDesktop.h"
#include "platform/macos/session/MacLoginItem.h"
#include "platform/macos/settings/MacFolders.h"
#include "platform/macos/settings/MacPreferences.h"
#include "platform/macos/settings/MacPropertyLists.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/macos/FrameworksTest.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;

class MacPreferencesTest : public FrameworksTest {
protected:
    MacPreferencesTest() {
        defaults_ = fake_.object("NSUserDefaults", "defaults");
        fake_.answer("standardUserDefaults", defaults_);
    }
    /// Stores a value and reads it back.
    std::optional<PreferenceValue> stored(const PreferenceValue& value) {
        preferences_.set("key", value);
        return preferences_.value("key");
    }

    Id defaults_ = nullptr;
    MacPreferences preferences_{fake_.runtime()};
};

TEST_F(MacPreferencesTest, everyTypeComesBackAsItWas) {
    const PreferenceDates dates = {{"left|a", Date{Seconds{1}}}, {"grow|b", Date{Seconds{2.5}}}};
    const std::vector<PreferenceValue> values = {true, false, std::int64_t{5}, 2.5, "text", Date{Seconds{-7.25}},
                                                 dates};
    for (const auto& value : values) EXPECT_THAT(stored(value), Optional(value)) << value.index();
}

TEST_F(MacPreferencesTest, writesInTheDefaultsOwnWords) {
    preferences_.set("openInterval", std::int64_t{10});
    EXPECT_THAT(fake_.sent, ElementsAre("[NSUserDefaults standardUserDefaults]", "[NSNumber numberWithLongLong:10]",
                                        "[defaults setObject:number 10 forKey:\"openInterval\"]"));
}

TEST_F(MacPreferencesTest, whatIsNotThereIsNone) { EXPECT_FALSE(preferences_.value("key")); }

TEST_F(MacPreferencesTest, typesThatAreNotOursAreNone) {
    auto& entries = fake_.at(defaults_).entries;
    entries["data"] = fake_.object("NSData", "data");
    entries["list"] = fake_.array({});
    entries["mixed"] = fake_.dictionary({{"a", fake_.number("date", 1.0)}, {"b", fake_.text("no date")}});
    for (const auto* key : {"data", "list", "mixed"}) EXPECT_FALSE(preferences_.value(key)) << key;
}

TEST_F(MacPreferencesTest, aNumberOfAnotherTypeCountsAsAbsent) {
    preferences_.set("openInterval", 2.5);
    EXPECT_FALSE(preferences_.get<std::int64_t>("openInterval"));
    preferences_.set("notifyOnAction", std::int64_t{0});
    EXPECT_FALSE(preferences_.get<bool>("notifyOnAction"));
    preferences_.set("notifyOnAction", false);
    EXPECT_EQ(preferences_.get<bool>("notifyOnAction"), false);
}

class MacPropertyListsTest : public FrameworksTest {
protected:
    /// Makes a file contain this object.
    void hold(Id list) {
        fake_.answer("dataWithContentsOfFile:", fake_.object("NSData", "bytes"));
        fake_.answer("propertyListWithData:options:format:error:", list);
    }

    MacPropertyLists lists_{fake_.runtime()};
};

TEST_F(MacPropertyListsTest, readsATextAtTheTop) {
    hold(fake_.dictionary({{"name", fake_.text("Phone")}}));
    EXPECT_THAT(lists_.text("/d/device.plist", "name"), Optional(std::string("Phone")));
    EXPECT_THAT(fake_.sent, ElementsAre("[NSData dataWithContentsOfFile:\"/d/device.plist\"]",
                                        "[NSPropertyListSerialization propertyListWithData:bytes options:0 "
                                        "format:pointer error:pointer]"));
}

TEST_F(MacPropertyListsTest, everythingElseIsNone) {
    EXPECT_FALSE(lists_.text("/nowhere", "name"));
    hold(Id{});
    EXPECT_FALSE(lists_.text("/damaged", "name"));
    hold(fake_.array({}));
    EXPECT_FALSE(lists_.text("/list", "name"));
    hold(fake_.dictionary({}));
    EXPECT_FALSE(lists_.text("/empty", "name"));
    hold(fake_.dictionary({{"name", fake_.number("number 1", std::int64_t{1})}}));
    EXPECT_FALSE(lists_.text("/number", "name"));
}

class MacFoldersTest : public FrameworksTest {};

TEST_F(MacFoldersTest, theFileManagerNamesTheFolders) {
    fake_.answer("defaultManager", fake_.object("NSFileManager", "files"));
    fake_.answer("URLsForDirectory:inDomains:", fake_.array({fake_.url("/Users/ada/Library/Application Support")}));
    const MacFolders folders(*fake_.runtime());
    EXPECT_EQ(folders.home(), "/Users/ada");
    EXPECT_EQ(folders.applicationSupport(), "/Users/ada/Library/Application Support");
    EXPECT_THAT(fake_.sent, ElementsAre("[NSFileManager defaultManager]", "[files URLsForDirectory:14 inDomains:1]"));
}

TEST_F(MacFoldersTest, aFileManagerThatKnowsNoFolderLeavesTheUsualOne) {
    const MacFolders folders(*fake_.runtime());
    EXPECT_EQ(folders.applicationSupport(), "/Users/ada/Library/Application Support");
}

TEST_F(MacFoldersTest, theSyncFolderIsICloudDriveWhileItIsThere) {
    const fakes::TemporaryFolder home;
    RuntimeCalls calls = fake_.runtime()->calls();
    calls.homeFolder = [&] { return fake_.text(home.path().native()); };
    const MacFolders folders{Runtime(calls)};
    EXPECT_FALSE(folders.syncFolder());
    const auto drive = home / "Library/Mobile Documents/com~apple~CloudDocs";
    std::filesystem::create_directories(drive);
    EXPECT_THAT(folders.syncFolder(), Optional(drive));
}

class MacDesktopTest : public FrameworksTest {
protected:
    MacDesktopTest() {
        fake_.answer("sharedWorkspace", fake_.object("NSWorkspace", "workspace"));
        fake_.answer("generalPasteboard", fake_.object("NSPasteboard", "pasteboard"));
    }

    MacDesktop desktop_{fake_.runtime()};
};

TEST_F(MacDesktopTest, opensAFile) {
    desktop_.open("/home/ada/site.log");
    EXPECT_EQ(fake_.sent.back(), "[workspace openURL:url /home/ada/site.log]");
}

TEST_F(MacDesktopTest, thePasteboardIsClearedAndTakesTheText) {
    desktop_.copyText("node server.js");
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSPasteboard generalPasteboard]", "[pasteboard clearContents]",
                            "[pasteboard setString:\"node server.js\" forType:\"public.utf8-plain-text\"]"));
}

TEST_F(MacDesktopTest, aTextThatIsNotUTF8IsRepaired) {
    desktop_.copyText("a\xFF");
    EXPECT_EQ(fake_.sent.back(), "[pasteboard setString:\"a\xEF\xBF\xBD\" forType:\"public.utf8-plain-text\"]");
}

class MacLoginItemTest : public FrameworksTest {
protected:
    MacLoginItemTest() { fake_.answer("mainAppService", fake_.object("SMAppService", "service")); }
    void failWith(const std::string& selector, Id error) {
        fake_.answer(selector, [error](const Message& message) -> Value {
            *static_cast<Id*>(std::get<void*>(message.arguments[0])) = error;
            return false;
        });
    }

    MacLoginItem item_{fake_.runtime()};
};

TEST_F(MacLoginItemTest, theServiceTellsItsStatus) {
    const std::vector<LoginStatus> statuses = {LoginStatus::notRegistered, LoginStatus::enabled,
                                               LoginStatus::requiresApproval, LoginStatus::notFound,
                                               LoginStatus::notRegistered};
    for (std::size_t number = 0; number < statuses.size(); ++number) {
        fake_.answer("status", static_cast<std::int64_t>(number));
        EXPECT_EQ(item_.status(), statuses[number]) << number;
    }
}

TEST_F(MacLoginItemTest, enrollsAndWithdraws) {
    fake_.answer("registerAndReturnError:", true);
    fake_.answer("unregisterAndReturnError:", true);
    EXPECT_FALSE(item_.enroll());
    EXPECT_FALSE(item_.withdraw());
    item_.openSettings();
    EXPECT_THAT(fake_.sent, ElementsAre("[SMAppService mainAppService]", "[service registerAndReturnError:pointer]",
                                        "[SMAppService mainAppService]", "[service unregisterAndReturnError:pointer]",
                                        "[SMAppService openSystemSettingsLoginItems]"));
}

TEST_F(MacLoginItemTest, aFailureHasTheHostsWords) {
    const Id error = fake_.object("NSError", "error");
    fake_.at(error).text = "Operation not permitted";
    failWith("registerAndReturnError:", error);
    EXPECT_THAT(item_.enroll(), Optional(std::string("Operation not permitted")));
    failWith("unregisterAndReturnError:", Id{});
    EXPECT_THAT(item_.withdraw(), Optional(std::string()));
}

class ActiveCoresTest : public FrameworksTest {};

TEST_F(ActiveCoresTest, areThoseThatTakeWork) {
    fake_.answer("processInfo", fake_.object("NSProcessInfo", "process"));
    fake_.answer("activeProcessorCount", std::uint64_t{10});
    EXPECT_EQ(activeCores(*fake_.runtime()), 10);
    EXPECT_THAT(fake_.sent, ElementsAre("[NSProcessInfo processInfo]", "[process activeProcessorCount]"));
}

}  // namespace
}  // namespace tolvane::machost
