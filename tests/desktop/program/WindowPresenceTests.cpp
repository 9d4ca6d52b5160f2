#include "desktop/program/WindowPresence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtTest/qtestspontaneevent.h>
#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QHideEvent>
#include <QMainWindow>
#include <QWidget>
#include <string>
#include <vector>

#include "desktop/program/FileOpenEvents.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(WindowPresence, tellsOfOpeningAndClosingOnceEach) {
    std::vector<bool> told;
    const WindowPresence presence([&](bool open) { told.push_back(open); });
    {
        QMainWindow window;
        window.show();
        window.raise();
        window.close();
        window.show();
        EXPECT_THAT(told, ElementsAre(false, true, false, true));
    }
    EXPECT_THAT(told, ElementsAre(false, true, false, true, false));
}

TEST(WindowPresence, knowsAWindowThatIsOpenAlready) {
    QMainWindow window;
    window.show();
    std::vector<bool> told;
    const WindowPresence presence([&](bool open) { told.push_back(open); });
    EXPECT_THAT(told, ElementsAre(true));
}

TEST(WindowPresence, panelsAndPartsOfWindowsDoNotCount) {
    std::vector<bool> told;
    const WindowPresence presence([&](bool open) { told.push_back(open); });
    QWidget panel;
    panel.show();
    panel.close();
    EXPECT_THAT(told, ElementsAre(false));
}

TEST(WindowPresence, minimisingIsNoClosing) {
    QMainWindow window;
    window.show();
    std::vector<bool> told;
    const WindowPresence presence([&](bool open) { told.push_back(open); });
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    QCoreApplication::instance()->notify(&window, &minimised);
    EXPECT_THAT(told, ElementsAre(true));
    window.close();
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST(FileOpenEvents, aFileThatIsHandedOverIsOpened) {
    std::vector<std::string> opened;
    const FileOpenEvents events([&](const auto& paths) { opened.insert(opened.end(), paths.begin(), paths.end()); });
    QFileOpenEvent event(QStringLiteral("/home/ada/R\u00e4ume.tolvanerules"));
    EXPECT_TRUE(QCoreApplication::sendEvent(QCoreApplication::instance(), &event));
    EXPECT_THAT(opened, ElementsAre("/home/ada/R\xC3\xA4ume.tolvanerules"));
}

TEST(FileOpenEvents, anAddressThatIsNoFileIsLeftToOthers) {
    std::vector<std::string> opened;
    const FileOpenEvents events([&](const auto& paths) { opened.insert(opened.end(), paths.begin(), paths.end()); });
    QFileOpenEvent event{QUrl(QStringLiteral("tolvane:rules"))};
    QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    EXPECT_THAT(opened, IsEmpty());
}

}  // namespace
}  // namespace tolvane::desktop
