#include "desktop/program/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileOpenEvent>
#include <memory>
#include <utility>
#include <vector>

#include "app/preferences/AppPreferences.h"
#include "tests/desktop/Pointer.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;

class RecordedDock : public Dock {
public:
    explicit RecordedDock(std::shared_ptr<std::vector<bool>> told) : told_(std::move(told)) {}

    void setInDock(bool inDock) override { told_->push_back(inDock); }

private:
    std::shared_ptr<std::vector<bool>> told_;
};

class ProgramTest : public ::testing::Test {
protected:
    ProgramTest() {
        fake.world->hasTray = true;
        fake.host.dock = std::make_unique<RecordedDock>(told);
    }
    Program& make() {
        const Purpose purpose{.demo = true, .pictures = {}};
        program = std::make_unique<Program>(*static_cast<QApplication*>(QCoreApplication::instance()),
                                            std::move(fake.host), purpose);
        return *program;
    }

    fakes::FakeHost fake;
    std::shared_ptr<std::vector<bool>> told = std::make_shared<std::vector<bool>>();
    std::unique_ptr<Program> program;
};

TEST_F(ProgramTest, standsInTheDockWhileItsWindowIsOpen) {
    auto& shell = make().show(true);
    EXPECT_THAT(*told, ElementsAre(false, true));
    shell.window()->close();
    EXPECT_THAT(*told, ElementsAre(false, true, false));
    shell.openWindow();
    EXPECT_THAT(*told, ElementsAre(false, true, false, true));
}

TEST_F(ProgramTest, aWindowThatIsMadeLongAfterAStartAtLoginIsFollowedToo) {
    AppPreferences::atLogin.store(*fake.host.preferences, true);
    auto& shell = make().show(true);
    EXPECT_EQ(shell.window(), nullptr);
    EXPECT_THAT(*told, ElementsAre(false));
    shell.togglePanel({});
    EXPECT_THAT(*told, ElementsAre(false)) << "the panel is no window of the Dock's";
    shell.openWindow();
    EXPECT_THAT(*told, ElementsAre(false, true));
    shell.window()->close();
    EXPECT_THAT(*told, ElementsAre(false, true, false));
}

TEST_F(ProgramTest, aStartByTheLoginKeepsTheWindowClosed) {
    auto& shell = make().show(true, true);
    EXPECT_EQ(shell.window(), nullptr);
    EXPECT_EQ(&program->show(true), &shell) << "once";
    EXPECT_EQ(shell.window(), nullptr);
}

TEST_F(ProgramTest, aFileThatStartsTheProgramIsAnsweredInItsWindow) {
    const fakes::TemporaryFolder folder;
    folder.write("mine.tolvanerules", "no rules");
    make().answer({});
    QFileOpenEvent event(QString::fromStdString(folder / "mine.tolvanerules"));
    QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    EXPECT_TRUE(program->show(true).isWindowShown());
    EXPECT_THAT(fake.world->notifications, ::testing::IsEmpty());
}

TEST_F(ProgramTest, aDesktopWithoutADockIsNoHindrance) {
    fake.host.dock.reset();
    EXPECT_TRUE(make().show(true).isWindowShown());
}

TEST_F(ProgramTest, onAScreenThatIsMadeUpTheToolkitTellsOfWindows) {
    fake.host.windows = std::move(fake.windows);
    fake.world->windowVisible = false;
    make().show(true);
    turnLoop();
    EXPECT_THAT(fake.world->windowObservers, ::testing::IsEmpty());
}

}  // namespace
}  // namespace tolvane::desktop
