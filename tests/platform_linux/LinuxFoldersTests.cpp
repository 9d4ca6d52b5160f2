#include "platform/linux/LinuxFolders.h"

#include <gmock/gmock.h>
#include <unistd.h>

namespace tolvane::linuxhost {

using ::testing::ElementsAre;

TEST(LinuxFolders, defaultsLieBelowHome) {
    const LinuxFolders folders(environmentOf({{"HOME", "/home/ada"}}));
    EXPECT_EQ(folders.home(), "/home/ada");
    EXPECT_EQ(folders.applicationSupport(), "/home/ada/.local/share");
    EXPECT_EQ(folders.configHome(), "/home/ada/.config");
    EXPECT_EQ(folders.stateHome(), "/home/ada/.local/state");
    EXPECT_THAT(folders.dataFolders(), ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share"));
}

TEST(LinuxFolders, variablesReplaceTheDefaults) {
    const LinuxFolders folders(environmentOf({{"HOME", "/home/ada"},
                                              {"XDG_DATA_HOME", "/data"},
                                              {"XDG_CONFIG_HOME", "/config"},
                                              {"XDG_STATE_HOME", "/state"},
                                              {"XDG_DATA_DIRS", "/opt/share:/usr/share"}}));
    EXPECT_EQ(folders.applicationSupport(), "/data");
    EXPECT_EQ(folders.configHome(), "/config");
    EXPECT_EQ(folders.stateHome(), "/state");
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

TEST(Environment, theProcessEnvironmentIsTheRealOne) {
    EXPECT_TRUE(processEnvironment()("PATH"));
    EXPECT_EQ(processEnvironment()("TOLVANE_NOT_SET_ANYWHERE"), std::nullopt);
}

}  // namespace tolvane::linuxhost
