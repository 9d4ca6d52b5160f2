#include "desktop/window/WindowState.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tolvane::desktop {
namespace {

TEST(WindowState, comesBackInTheNextRun) {
    const QTemporaryDir folder;
    const auto path = folder.filePath("state/window.ini");
    {
        WindowState state(path);
        state.set("main/geometry", QByteArray("\0\1\2", 3));
        state.set("processes/inspector", false);
        state.set("processes/columns", QStringLiteral("Memory=80"));
    }
    const WindowState again(path);
    EXPECT_EQ(again.bytes("main/geometry"), QByteArray("\0\1\2", 3));
    EXPECT_FALSE(again.flag("processes/inspector", true));
    EXPECT_EQ(again.text("processes/columns"), "Memory=80");
}

TEST(WindowState, writesOnlyWhatChanged) {
    const QTemporaryDir folder;
    const auto path = folder.filePath("window.ini");
    WindowState state(path);
    EXPECT_FALSE(QFile::exists(path));
    state.set("a", 1);
    QFile::remove(path);
    state.set("a", 1);
    EXPECT_FALSE(QFile::exists(path));
}

TEST(WindowState, survivesAFileOfAnythingAndNoFileAtAll) {
    const QTemporaryDir folder;
    const auto path = folder.filePath("window.ini");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\xff\xfe[[[=\n%%%\0=", 12));
    file.close();
    EXPECT_TRUE(WindowState(path).flag("x", true));
    WindowState nowhere("/proc/no/such/place.ini");
    nowhere.set("x", false);
    EXPECT_FALSE(nowhere.flag("x", true));
}

TEST(WindowState, standsInTheFolderForState) {
    qputenv("XDG_STATE_HOME", "/tmp/state");
    EXPECT_EQ(WindowState::usualPath(), "/tmp/state/Tolvane/window.ini");
    qputenv("XDG_STATE_HOME", "not/absolute");
    EXPECT_TRUE(WindowState::usualPath().endsWith("/.local/state/Tolvane/window.ini"));
    qunsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace tolvane::desktop
