#include "platform/linux/applications/AppUnit.h"

#include <gmock/gmock.h>

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string manager = "/user.slice/user-1000.slice/user@1000.service/app.slice/";

std::vector<std::string> identifiers(const std::string& unit) {
    return appIdentifiersOfCgroup("0::" + manager + unit + "\n");
}

}  // namespace

TEST(AppUnit, aScopeIsNamedAfterItsApplication) {
    EXPECT_THAT(identifiers("app-firefox-4977.scope"), ElementsAre("firefox"));
    EXPECT_THAT(identifiers("app-org.kde.konsole-1a2b3c.scope"), ElementsAre("org.kde.konsole"));
}

TEST(AppUnit, aLauncherMayStandBefore) {
    EXPECT_THAT(identifiers("app-gnome-org.gnome.Nautilus-4977.scope"),
                ElementsAre("gnome-org.gnome.Nautilus", "org.gnome.Nautilus"));
    EXPECT_THAT(identifiers("app-flatpak-org.example.Editor-1234.scope"),
                ElementsAre("flatpak-org.example.Editor", "org.example.Editor"));
}

TEST(AppUnit, escapedDashesComeBack) {
    EXPECT_THAT(identifiers("app-gnome-google\\x2dchrome-77.scope"),
                ElementsAre("gnome-google-chrome", "google-chrome"));
}

TEST(AppUnit, aLauncherThatEscapesNothingIsUnderstoodToo) {
    EXPECT_THAT(identifiers("app-google-chrome-77.scope"), ElementsAre("google-chrome", "chrome"));
}

TEST(AppUnit, aScopeWithoutARandomPartIsItsName) {
    EXPECT_THAT(identifiers("app-editor.scope"), ElementsAre("editor"));
}

TEST(AppUnit, aServiceMayHaveAnInstance) {
    EXPECT_THAT(identifiers("app-org.kde.dolphin@1a2b.service"), ElementsAre("org.kde.dolphin"));
    EXPECT_THAT(identifiers("app-gnome-slack@autostart.service"), ElementsAre("gnome-slack", "slack"));
    EXPECT_THAT(identifiers("app-slack.service"), ElementsAre("slack"));
}

TEST(AppUnit, theInnermostUnitComesFirst) {
    EXPECT_THAT(identifiers("app-org.gnome.Terminal.slice/vte-spawn-9d2f.scope"), ElementsAre("org.gnome.Terminal"));
    EXPECT_THAT(identifiers("app-org.kde.konsole-12.scope/tab(34).scope"), ElementsAre("org.kde.konsole"));
    EXPECT_THAT(identifiers("app-a.slice/app-b-1.scope"), ElementsAre("b", "a"));
}

TEST(AppUnit, snapsNameTheirScopes) {
    EXPECT_THAT(identifiers("snap.firefox.firefox-6d5b0c0e-0c51-4c35-a2a8-3d1d7b9d0f11.scope"),
                ElementsAre("firefox_firefox"));
    EXPECT_THAT(identifiers("snap.code.url-handler-6d5b0c0e-0c51-4c35-a2a8-3d1d7b9d0f11.scope"),
                ElementsAre("code_url-handler", "code_code"));
    EXPECT_THAT(identifiers("snap.spotify.spotify.0c51.scope"), ElementsAre("spotify_spotify"));
    EXPECT_THAT(identifiers("snap.lxd.daemon.service"), IsEmpty());
}

TEST(AppUnit, busActivatedApplicationsNameTheirService) {
    EXPECT_THAT(identifiers("dbus-:1.2-org.gnome.Calculator@0.service"), ElementsAre("org.gnome.Calculator"));
}

TEST(AppUnit, otherUnitsNameNobody) {
    for (const char* unit : {"", "pipewire.service", "session-2.scope", "run-r12.scope", "myapp-1.scope", "app-",
                             "app-.scope", "snap.", "snap.x.scope", "dbus-x.service", "app-x.mount"}) {
        EXPECT_THAT(identifiers(unit), IsEmpty()) << unit;
    }
}

TEST(AppUnit, onlyTheServiceManagersHierarchyCounts) {
    EXPECT_THAT(
        appIdentifiersOfCgroup("12:memory:/app-wrong-1.scope\n1:name=systemd:" + manager + "app-right-1.scope\n0::/\n"),
        ElementsAre("right"));
    EXPECT_THAT(appIdentifiersOfCgroup(""), IsEmpty());
    EXPECT_THAT(appIdentifiersOfCgroup("0::\nrubbish\n1:name=systemd:\n\xff"), IsEmpty());
}

TEST(UnitNames, onlyWholeEscapesAreTakenBack) {
    EXPECT_EQ(unescapedUnitName("a\\x2db\\x40"), "a-b@");
    EXPECT_EQ(unescapedUnitName("a\\x2"), "a\\x2");
    EXPECT_EQ(unescapedUnitName("a\\xzz\\"), "a\\xzz\\");
    EXPECT_EQ(unescapedUnitName(""), "");
}

TEST(FlatpakInfo, namesTheApplication) {
    EXPECT_EQ(flatpakIdentifier("[Application]\nname=org.example.Editor\nruntime=x\n[Instance]\nname=wrong\n"),
              "org.example.Editor");
}

TEST(FlatpakInfo, otherSectionsNameNobody) {
    EXPECT_EQ(flatpakIdentifier("[Runtime]\nname=org.example.Platform\n"), std::nullopt);
    EXPECT_EQ(flatpakIdentifier("[Application]\nname=\n"), std::nullopt);
    EXPECT_EQ(flatpakIdentifier(""), std::nullopt);
}

TEST(SnapExecutable, liesBelowThePackagesFolder) {
    EXPECT_EQ(snapOfExecutable("/snap/firefox/5187/usr/lib/firefox/firefox"), "firefox");
    EXPECT_EQ(snapOfExecutable("/snap/bin"), std::nullopt);
    EXPECT_EQ(snapOfExecutable("/snap//x"), std::nullopt);
    EXPECT_EQ(snapOfExecutable("/home/ada/snap/firefox/x"), std::nullopt);
}

TEST(AppUnit, namesAreEscapedSoThatTheyComeBack) {
    EXPECT_EQ(escapedUnitName("org.example.my-editor"), "org.example.my\\x2deditor");
    EXPECT_EQ(escapedUnitName(".a/b c"), "\\x2ea\\x2fb\\x20c");
    for (const std::string name : {"a-b", "org.example.X", ".hidden", "\xc3\xa9 @%"})
        EXPECT_EQ(unescapedUnitName(escapedUnitName(name)), name);
    EXPECT_THAT(appIdentifiersOfCgroup("0::/user.slice/app.slice/app-" + escapedUnitName("my-editor") + "-12.scope"),
                ::testing::Contains("my-editor"));
}

}  // namespace tolvane::linuxhost
