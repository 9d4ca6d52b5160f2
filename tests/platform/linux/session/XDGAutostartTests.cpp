#include "platform/linux/session/XDGAutostart.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::HasSubstr;
using ::testing::Optional;

constexpr const char* file = "dev.tolvane.Tolvane.desktop";

class XDGAutostartTest : public ::testing::Test {
protected:
    XDGAutostart item() const { return itemFor("/bin/true"); }
    XDGAutostart itemFor(const std::string& program) const {
        return XDGAutostart({.folder = folder.at("own"),
                             .systemFolders = {folder.at("first"), folder.at("second")},
                             .program = program});
    }
    void write(const std::string& place, const std::string& lines) const {
        folder.write(place + "/" + file, "[Desktop Entry]\nType=Application\nName=Tolvane\n" + lines);
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(XDGAutostartTest, enrollingAndWithdrawing) {
    auto login = item();
    EXPECT_EQ(login.status(), LoginStatus::notRegistered);
    EXPECT_EQ(login.enroll(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::enabled);
    EXPECT_THAT(folder.read(std::string("own/") + file), HasSubstr("\nExec=\"/bin/true\" -atLogin YES\n"));
    EXPECT_EQ(login.withdraw(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::notRegistered);
    EXPECT_FALSE(folder.has(std::string("own/") + file));
    EXPECT_EQ(login.withdraw(), std::nullopt);
}

TEST_F(XDGAutostartTest, anEntryThatIsHiddenOrSwitchedOffDoesNotCount) {
    write("own", "Exec=/bin/true\nHidden=true\n");
    EXPECT_EQ(item().status(), LoginStatus::notRegistered);
    write("own", "Exec=/bin/true\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_EQ(item().status(), LoginStatus::notRegistered);
    write("own", "Exec=/bin/true\nHidden=false\n");
    EXPECT_EQ(item().status(), LoginStatus::enabled);
}

TEST_F(XDGAutostartTest, enrollingReplacesAHiddenEntry) {
    write("own", "Exec=/bin/true\nHidden=true\n");
    auto login = item();
    EXPECT_EQ(login.enroll(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::enabled);
}

TEST_F(XDGAutostartTest, anEntryWhoseProgramIsGoneStartsNothing) {
    write("own", "Exec=/nowhere/tolvane\n");
    EXPECT_EQ(item().status(), LoginStatus::notRegistered);
    folder.write(std::string("own/") + file, "nonsense");
    EXPECT_EQ(item().status(), LoginStatus::notRegistered);
}

TEST_F(XDGAutostartTest, theUsersEntryGoesBeforeAPackages) {
    write("second", "Exec=/bin/true\n");
    EXPECT_EQ(item().status(), LoginStatus::enabled);
    write("first", "Exec=/bin/true\nHidden=true\n");
    EXPECT_EQ(item().status(), LoginStatus::notRegistered);
    write("own", "Exec=/bin/true\n");
    EXPECT_EQ(item().status(), LoginStatus::enabled);
}

TEST_F(XDGAutostartTest, aPackagesEntryIsHiddenToWithdrawIt) {
    write("first", "Exec=/bin/true\n");
    auto login = item();
    EXPECT_EQ(login.withdraw(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::notRegistered);
    EXPECT_TRUE(folder.has(std::string("first/") + file));
    EXPECT_THAT(folder.read(std::string("own/") + file), HasSubstr("Hidden=true"));
}

TEST_F(XDGAutostartTest, anyPathOfTheProgramComesThrough) {
    const std::string program = folder.write("a $b \"c\" `d` \\e 100% f", "");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    auto login = itemFor(program);
    EXPECT_EQ(login.enroll(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::enabled);
    std::filesystem::remove(program);
    EXPECT_EQ(login.status(), LoginStatus::notRegistered);
}

TEST_F(XDGAutostartTest, whatCannotBeWrittenIsTold) {
    folder.write("own", "a file where the folder should be");
    auto login = item();
    EXPECT_THAT(login.enroll(), Optional(HasSubstr(folder.at("own"))));
    EXPECT_NE(itemFor("").enroll(), std::nullopt);
    EXPECT_EQ(login.status(), LoginStatus::notRegistered);
}

TEST_F(XDGAutostartTest, placesAreThoseOfTheXDGRules) {
    const auto environment = environmentOf({{"HOME", folder.path()}, {"XDG_CONFIG_DIRS", "/a:relative:/b"}});
    const auto places = XDGAutostart::placesFor(LinuxFolders(environment), environment);
    EXPECT_EQ(places.folder, folder.at(".config/autostart"));
    EXPECT_EQ(places.systemFolders, (std::vector<std::string>{"/a/autostart", "/b/autostart"}));
    EXPECT_EQ(::access(places.program.c_str(), X_OK), 0);
    const auto usual = environmentOf({{"HOME", folder.path()}, {"APPIMAGE", "/opt/Tolvane.AppImage"}});
    EXPECT_EQ(XDGAutostart::placesFor(LinuxFolders(usual), usual).systemFolders,
              std::vector<std::string>{"/etc/xdg/autostart"});
    EXPECT_EQ(XDGAutostart::placesFor(LinuxFolders(usual), usual).program, "/opt/Tolvane.AppImage");
}

}  // namespace tolvane::linuxhost
