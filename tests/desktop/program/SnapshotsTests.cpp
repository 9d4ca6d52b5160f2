#include "desktop/program/Snapshots.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "desktop/program/Screens.h"
#include "tests/desktop/DemoScene.h"

namespace tolvane::desktop {
namespace {

class SnapshotsTest : public ::testing::Test {
protected:
    Snapshots render(const QString& folder, bool dark) {
        return {scene.model, scene.look, allScreens(scene.model, scene.look, scene.state, "en_US"),
                folder,      dark,       [this](bool written) { done = written; }};
    }

    DemoScene scene;
    QTemporaryDir out;
    std::optional<bool> done;
};

TEST_F(SnapshotsTest, rendersEveryScreenInBothSchemes) {
    const auto snapshots = render(out.filePath("out"), true);
    scene.fake.clock->advance(Seconds{0.9});
    EXPECT_FALSE(done.has_value()) << "the demo gets a second";
    scene.fake.clock->advance(Seconds{0.2});
    EXPECT_EQ(done, true);
    const QImage light(out.filePath("out/processes.png")), dark(out.filePath("out/processes-dark.png"));
    EXPECT_EQ(light.size() / light.devicePixelRatio(), QSize(1040, 640));
    EXPECT_EQ(light.pixelColor(5, 600), lightTokens.sidebar);
    EXPECT_EQ(dark.pixelColor(5, 600), darkTokens.sidebar);
}

TEST_F(SnapshotsTest, rendersSectionsAndSheetsUnderTheirNames) {
    const auto snapshots = render(out.path(), true);
    scene.fake.clock->advance(Seconds{2});
    for (const auto* name : {"processes", "projects", "suggestions", "history", "stats", "rules", "activity", "newrule",
                             "newrule-agents", "settings", "selection", "menubar"}) {
        EXPECT_FALSE(QImage(out.filePath(QString(name) + ".png")).isNull()) << name;
        EXPECT_FALSE(QImage(out.filePath(QString(name) + "-dark.png")).isNull()) << name;
    }
    EXPECT_EQ(QDir(out.path()).entryList(QDir::Files).size(), 24);
}

TEST_F(SnapshotsTest, theSelectionIsPutBack) {
    const auto before = *scene.model.selectedRows;
    const auto snapshots = render(out.path(), false);
    scene.fake.clock->advance(Seconds{2});
    EXPECT_EQ(*scene.model.selectedRows, before);
}

TEST_F(SnapshotsTest, rendersLightAloneUnlessAskedOtherwise) {
    const auto snapshots = render(out.path(), false);
    scene.fake.clock->advance(Seconds{2});
    EXPECT_TRUE(QFile::exists(out.filePath("processes.png")));
    EXPECT_FALSE(QFile::exists(out.filePath("processes-dark.png")));
}

TEST_F(SnapshotsTest, saysWhenTheFolderCannotBeWritten) {
    const auto snapshots = render("/proc/no/such/folder", false);
    scene.fake.clock->advance(Seconds{2});
    EXPECT_EQ(done, false);
}

}  // namespace
}  // namespace tolvane::desktop
