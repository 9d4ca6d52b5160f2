#include <gmock/gmock.h>
#include <unistd.h>

#include "app/preferences/LayeredPreferences.h"
#include "platform/linux/makeLinuxHost.h"
#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::NotNull;

TEST(MakeLinuxHost, everyPartIsThere) {
    const TemporaryFolder home;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}}), {});
    EXPECT_THAT(host.machine, NotNull());
    EXPECT_THAT(host.control, NotNull());
    EXPECT_THAT(host.applications, NotNull());
    EXPECT_THAT(host.frontmost, NotNull());
    EXPECT_THAT(host.running, NotNull());
    EXPECT_THAT(host.notifications, NotNull());
    EXPECT_THAT(host.loginItem, NotNull());
    EXPECT_THAT(host.desktop, NotNull());
    EXPECT_THAT(host.services, NotNull());
    EXPECT_THAT(host.children, NotNull());
    EXPECT_THAT(host.propertyLists, NotNull());
    EXPECT_THAT(host.pressure, NotNull());
    EXPECT_THAT(host.preferences, NotNull());
    EXPECT_THAT(host.clock, NotNull());
    EXPECT_THAT(host.log, NotNull());
    EXPECT_THAT(host.trays, NotNull());
    EXPECT_THAT(host.covers, NotNull());
    EXPECT_THAT(host.appearance, NotNull());
    EXPECT_EQ(host.folders->applicationSupport(), home.at(".local/share"));
    EXPECT_EQ(host.selfPID, ::getpid());
    EXPECT_EQ(host.uid, ::getuid());
}

TEST(MakeLinuxHost, preferencesLieInTheConfigurationFolderBelowTheOverrides) {
    const TemporaryFolder home;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}, {"XDG_CONFIG_HOME", home.at("config")}}),
                                    LayeredPreferences::layer({{"demo", true}}));
    EXPECT_EQ(host.preferences->get<bool>("demo"), true);
    EXPECT_FALSE(home.has("config"));
    host.preferences->set("rulesPaused", true);
    EXPECT_TRUE(home.has("config/Tolvane/dev.tolvane.Tolvane.plist"));
}

TEST(MakeLinuxHost, withoutADesktopItsPartsSaySo) {
    const TemporaryFolder home;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}}), {});
    EXPECT_FALSE(host.frontmost->canTell());
    EXPECT_EQ(host.frontmost->current(), std::nullopt);
    const auto kept = host.frontmost->onActivation([](const std::string&) { FAIL(); });
    EXPECT_THAT(host.running->withAppID("org.example.Nothing"), ::testing::IsEmpty());
    host.notifications->post({.identifier = "1", .title = "t", .body = "b"});
    host.desktop->open("/nowhere/at/all");
    host.desktop->copyText("text");
    EXPECT_EQ(host.loginItem->status(), LoginStatus::notRegistered);
    const auto waiting = host.trays->onChange([] { FAIL(); });
    EXPECT_FALSE(host.trays->present());
    EXPECT_FALSE(host.covers->watch(1));
    EXPECT_FALSE(host.covers->isCovered(1));
}

TEST(MakeLinuxHost, aServerThatCannotBeReachedTellsNothingOfTraysAndWindows) {
    const TemporaryFolder home;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}, {"DISPLAY", ":99999"}}), {},
                                    {.drawsOnX11 = [] { return true; }});
    const auto waiting = host.trays->onChange([] { FAIL(); });
    EXPECT_FALSE(host.trays->present());
    EXPECT_FALSE(host.covers->watch(1));
}

TEST(MakeLinuxHost, theToolkitTakesWhatIsCopied) {
    const TemporaryFolder home;
    std::string copied;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}}), {},
                                    {.copyText = [&](const std::string& text) { copied = text; }});
    host.desktop->copyText("a line");
    EXPECT_EQ(copied, "a line");
}

TEST(MakeLinuxHost, aProcessIsLoweredByTheStartTimeThatReadersGive) {
    const TemporaryFolder home;
    const Host host = makeLinuxHost(environmentOf({{"HOME", home.path()}}), {});
    const ChildProcess child([](const ChildProcess::Line& line) {
        line.tell();
        line.hear();
    });
    ASSERT_TRUE(child.line().hear());
    const auto record = host.makeInspection()->bsdRecord(child.pid());
    ASSERT_TRUE(record);
    EXPECT_TRUE(host.control->lowerPriority({.pid = child.pid(), .startTime = record->startTime}));
    EXPECT_TRUE(host.control->restorePriority({.pid = child.pid(), .startTime = record->startTime}));
}

}  // namespace tolvane::linuxhost
