#include "desktop/window/RuleFileDialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include "core/rules/RuleFile.h"
#include "desktop/look/QtText.h"
#include "desktop/window/AlertDialog.h"
#include "desktop/window/MainWindow.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::desktop {
namespace {

using ::testing::SizeIs;

class RuleFileDialogsTest : public ::testing::Test {
protected:
    RuleFileDialogsTest() {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        scene.modelState->rules.set({Rule{.id = UUID::random(), .name = "Idle a/b", .unusedMinutes = 5}});
        window.show();
        turnLoop();
    }

    QString file(std::string_view name, std::int64_t minutes) {
        folder.write(name, RuleFile::encode({Rule{.id = UUID::random(), .unusedMinutes = minutes}}));
        return qtText(folder / name);
    }
    template <typename Dialog>
    Dialog* open() {
        Dialog* shown = nullptr;
        for (auto* each : window.findChildren<Dialog*>()) {
            if (each->isVisible()) shown = each;
        }
        return shown;
    }
    static void accept(QFileDialog& panel) { QMetaObject::invokeMethod(&panel, "accept"); }

    SampleScene scene;
    AppModel& model = scene.model;
    fakes::TemporaryFolder folder;
    MainWindow window{model, scene.look, scene.state, {}};
};

TEST_F(RuleFileDialogsTest, importingOpensAPanelForSeveralRuleFiles) {
    model.askImport();
    auto* panel = open<QFileDialog>();
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->nameFilters(), QStringList("Tolvane Rules (*.tolvanerules)"));
    EXPECT_EQ(panel->fileMode(), QFileDialog::ExistingFiles);
    panel->setDirectory(qtText(folder.path().string()));
    const auto one = file("one.tolvanerules", 7);
    emit panel->filesSelected({one, file("two.tolvanerules", 8)});
    EXPECT_THAT(*model.rules, SizeIs(3));
    EXPECT_TRUE(model.importMessage->value_or("").starts_with("Added 1 rule from two.tolvanerules."));
    panel->close();
    turnLoop();
    EXPECT_FALSE(*model.importing);
}

TEST_F(RuleFileDialogsTest, dismissingAPanelEndsTheWish) {
    model.askImport();
    open<QFileDialog>()->reject();
    EXPECT_FALSE(*model.importing);
    EXPECT_EQ(*model.importMessage, std::nullopt);
    model.askExport(*model.rules);
    open<QFileDialog>()->reject();
    EXPECT_EQ(*model.exporting, std::nullopt);
}

TEST_F(RuleFileDialogsTest, exportingWritesTheRulesToTheChosenFile) {
    model.askExport(*model.rules);
    auto* panel = open<QFileDialog>();
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(panel->defaultSuffix(), "tolvanerules");
    panel->setDirectory(qtText(folder.path().string()));
    panel->selectFile("mine");
    accept(*panel);
    turnLoop();
    EXPECT_EQ(folder.read("mine.tolvanerules"), RuleFile::encode(*model.rules));
    EXPECT_EQ(*model.exporting, std::nullopt);
    EXPECT_FALSE(open<AlertDialog>());
}

TEST_F(RuleFileDialogsTest, anExportThatFailsSaysSo) {
    model.askExport(*model.rules);
    emit open<QFileDialog>() -> fileSelected(qtText(folder / "missing") + QStringLiteral("/\0x"));
    open<QFileDialog>()->reject();
    folder.write("file", "");
    model.askExport(*model.rules);
    emit open<QFileDialog>() -> fileSelected(qtText(folder / "file/mine.tolvanerules"));
    ASSERT_TRUE(open<AlertDialog>());
    EXPECT_FALSE(open<AlertDialog>()->accessibleName().isEmpty());
}

TEST_F(RuleFileDialogsTest, oneRuleGivesItsNameToTheFileSeveralDoNot) {
    EXPECT_EQ(RuleFileDialogs::fileName({Rule{.name = "Idle servers"}}), "Idle servers.tolvanerules");
    EXPECT_EQ(RuleFileDialogs::fileName({Rule{.name = "Idle a/b"}}), "Idle a-b.tolvanerules");
    EXPECT_EQ(RuleFileDialogs::fileName({Rule{}, Rule{}}), "Tolvane Rules.tolvanerules");
}

TEST_F(RuleFileDialogsTest, theMessageOfAnImportIsAnAlert) {
    scene.modelState->importMessage.set("Every rule in a is already in Tolvane.");
    turnLoop();
    auto* alert = open<AlertDialog>();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->accessibleName(), "Every rule in a is already in Tolvane.");
    auto* button = alert->findChild<QPushButton*>();
    EXPECT_EQ(button->text(), "OK");
    button->click();
    turnLoop();
    EXPECT_EQ(*model.importMessage, std::nullopt);
    EXPECT_FALSE(open<AlertDialog>());
}

TEST_F(RuleFileDialogsTest, aSecondMessageReplacesTheFirst) {
    scene.modelState->importMessage.set("first");
    scene.modelState->importMessage.set("second");
    turnLoop();
    ASSERT_TRUE(open<AlertDialog>());
    EXPECT_EQ(open<AlertDialog>()->accessibleName(), "second");
    EXPECT_EQ(*model.importMessage, "second");
}

TEST_F(RuleFileDialogsTest, filesDroppedOnTheWindowAreImported) {
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(file("one.tolvanerules", 7)), QUrl("https://example.org/a")});
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &drop);
    EXPECT_THAT(*model.rules, SizeIs(2));
    EXPECT_TRUE(*model.importMessage);
}

}  // namespace
}  // namespace tolvane::desktop
