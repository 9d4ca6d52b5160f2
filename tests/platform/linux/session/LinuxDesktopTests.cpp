#include "platform/linux/session/LinuxDesktop.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using testing::PrivateBus;

struct LinuxDesktopTest : ::testing::Test {
    PrivateBus daemon;
    std::shared_ptr<SessionBus> bus = std::make_shared<SessionBus>(daemon.address());
    std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>(bus, std::vector<std::string>{}, "/");
    std::vector<std::string> copied;
    LinuxDesktop desktop{launcher, [this](const std::string& text) { copied.push_back(text); }};
};

}  // namespace

TEST_F(LinuxDesktopTest, textGoesToTheToolkit) {
    desktop.copyText("one");
    EXPECT_THAT(copied, ElementsAre("one"));
    LinuxDesktop(launcher, nullptr).copyText("two");
}

}  // namespace tolvane::linuxhost
