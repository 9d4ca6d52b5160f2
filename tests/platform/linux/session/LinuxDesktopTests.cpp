#include "platform/linux/session/LinuxDesktop.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using testing::FakeService;
using testing::PrivateBus;

constexpr const char* managerInterface =
    "<node><interface name='org.freedesktop.FileManager1'><method name='ShowItems'>"
    "<arg type='as' direction='in'/><arg type='s' direction='in'/></method></interface></node>";

struct LinuxDesktopTest : ::testing::Test {
    PrivateBus daemon;
    std::shared_ptr<SessionBus> bus = std::make_shared<SessionBus>(daemon.address());
    std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>(bus, std::vector<std::string>{}, "/");
    std::vector<std::string> copied;
    LinuxDesktop desktop{bus, launcher, [this](const std::string& text) { copied.push_back(text); }};
};

}  // namespace

TEST_F(LinuxDesktopTest, theFileManagerShowsWhatIsRevealed) {
    const FakeService manager(daemon.address(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                              managerInterface, [](const std::string&) { return g_variant_new("()"); });
    desktop.reveal("/home/ada/src/a b");
    EXPECT_TRUE(runUntil([&] { return !manager.calls.empty(); }));
    EXPECT_THAT(manager.argumentsOf("ShowItems"), ElementsAre("(['file:///home/ada/src/a%20b'], '')"));
}

TEST_F(LinuxDesktopTest, whatIsNoPathIsNotRevealed) {
    const FakeService manager(daemon.address(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                              managerInterface, [](const std::string&) { return g_variant_new("()"); });
    desktop.reveal("relative");
    desktop.reveal("");
    desktop.reveal("/there");
    EXPECT_TRUE(runUntil([&] { return !manager.calls.empty(); }));
    EXPECT_THAT(manager.argumentsOf("ShowItems"), ElementsAre("(['file:///there'], '')"));
}

TEST_F(LinuxDesktopTest, textGoesToTheToolkit) {
    desktop.copyText("one");
    EXPECT_THAT(copied, ElementsAre("one"));
    LinuxDesktop(bus, launcher, nullptr).copyText("two");
}

}  // namespace tolvane::linuxhost
