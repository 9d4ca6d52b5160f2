#include "platform/linux/settings/LinuxFolders.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;

TEST(LinuxFolders, defaultsLieBelowHome) {
    const LinuxFolders folders(environmentOf({{"HOME", "/home/ada"}}));
    EXPECT_EQ(folders.home(), "/home/ada");
    EXPECT_EQ(folders.applicationSupport(), "/home/ada/.local/share");
    EXPECT_EQ(folders.configHome(), "/home/ada/.config");
    EXPECT_THAT(folders.dataFolders(), ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share"));
}

TEST(LinuxFolders, variablesReplaceTheDefaults) {
    const LinuxFolders folders(environmentOf({{"HOME", "/home/ada"},
                                              {"XDG_DATA_HOME", "/data"},
                                              {"XDG_CONFIG_HOME", "/config"},
                                              {"XDG_DATA_DIRS", "/opt/share:/usr/share"}}));
    EXPECT_EQ(folders.applicationSupport(), "/data");
    EXPECT_EQ(folders.configHome(), "/config");
    EXPECT_THAT(folders.dataFolders(), ElementsAre("/data", "/opt/share", "/usr/share"));
}

TEST(LinuxFolders, aRelativeOrEmptyPathCountsAsAbsent) {
    const LinuxFolders folders(environmentOf(
        {{"HOME", "/home/ada"}, {"XDG_DATA_HOME", "share"}, {"XDG_CONFIG_HOME", ""}, {"XDG_DATA_DIRS", ":share::"}}));
    EXPECT_EQ(folders.applicationSupport(), "/home/ada/.local/share");
    EXPECT_EQ(folders.configHome(), "/home/ada/.config");
    EXPECT_THAT(folders.dataFolders(), ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share"));
}

TEST(LinuxFolders, slashesAtTheEndAreCut) {
    const LinuxFolders folders(environmentOf({{"HOME", "/home/ada//"}, {"XDG_DATA_HOME", "/data/"}}));
    EXPECT_EQ(folders.home(), "/home/ada");
    EXPECT_EQ(folders.applicationSupport(), "/data");
}

TEST(LinuxFolders, theRootFolderAsHomeGivesNoDoubleSlash) {
    const LinuxFolders folders(environmentOf({{"HOME", "/"}}));
    EXPECT_EQ(folders.home(), "/");
    EXPECT_EQ(folders.applicationSupport(), "/.local/share");
}

TEST(LinuxFolders, withoutHomeTheAccountTells) {
    const auto account = homeOfAccount(::getuid());
    ASSERT_TRUE(account);
    EXPECT_EQ(LinuxFolders(environmentOf({})).home(), *account);
    EXPECT_EQ(LinuxFolders(environmentOf({{"HOME", ""}})).home(), *account);
}

TEST(LinuxFolders, anUnknownAccountHasNoHome) { EXPECT_EQ(homeOfAccount(4'000'000'017U), std::nullopt); }

struct SyncFolder : testing::Test {
    TemporaryFolder home;
    LinuxFolders folders{environmentOf({{"HOME", home.path()}})};

    void make(const std::string& name) const { std::filesystem::create_directories(home.at(name)); }
    void choose(const std::string& path) {
        folders.setSyncFolderChoice([path] { return std::optional(path); });
    }
};

TEST_F(SyncFolder, thereIsNoneWhereNothingSyncs) {
    home.write("Dropbox", "a file is no folder");
    EXPECT_EQ(folders.syncFolder(), std::nullopt);
}

TEST_F(SyncFolder, isTheFirstOfTheKnownServices) {
    const std::vector<std::string> names = {"Sync", "OneDrive", "Dropbox", "ownCloud", "Nextcloud"};
    for (const auto& name : names) {
        make(name);
        EXPECT_EQ(folders.syncFolder(), home.at(name));
    }
}

TEST_F(SyncFolder, theChosenOneGoesBeforeTheKnown) {
    make("Nextcloud");
    make("Shared");
    choose(home.at("Shared") + "/");
    EXPECT_EQ(folders.syncFolder(), home.at("Shared"));
    choose("~/Shared");
    EXPECT_EQ(folders.syncFolder(), home.at("Shared"));
}

TEST_F(SyncFolder, aChosenOneThatIsAwayIsNotReplacedByAnother) {
    make("Nextcloud");
    choose(home.at("Shared"));
    EXPECT_EQ(folders.syncFolder(), std::nullopt);
}

TEST_F(SyncFolder, aChoiceThatIsNoAbsolutePathCountsAsNone) {
    make("Nextcloud");
    choose("Shared");
    EXPECT_EQ(folders.syncFolder(), home.at("Nextcloud"));
    choose("");
    EXPECT_EQ(folders.syncFolder(), home.at("Nextcloud"));
}

TEST_F(SyncFolder, theOtherHostsServiceGoesBeforeAll) {
    make("Nextcloud");
    make("Shared");
    choose(home.at("Shared"));
    make("Library/Mobile Documents/com~apple~CloudDocs");
    EXPECT_EQ(folders.syncFolder(), home.at("Library/Mobile Documents/com~apple~CloudDocs"));
}

TEST(Environment, theProcessEnvironmentIsTheRealOne) {
    EXPECT_TRUE(processEnvironment()("PATH"));
    EXPECT_EQ(processEnvironment()("TOLVANE_NOT_SET_ANYWHERE"), std::nullopt);
}

}  // namespace tolvane::linuxhost
