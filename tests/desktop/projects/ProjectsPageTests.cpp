#include "desktop/projects/ProjectsPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "desktop/look/Tip.h"
#include "desktop/parts/QuestionDialog.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProjectsPageTest : public ::testing::Test {
protected:
    ProjectsPageTest() {
        for (const auto& row : scene.model.snapshot->rows) {
            if (row.project) roots.insert(row.project->str());
        }
    }

    ProjectsPage& page() {
        if (!page_) {
            page_ = std::make_unique<ProjectsPage>(scene.model, scene.look, "en_GB", "UTC");
            page_->resize(860, 588);
            page_->show();
            turn();
        }
        return *page_;
    }
    static void turn() {
        for (int turns = 0; turns < 5; ++turns) QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    std::vector<std::string> titles() {
        std::vector<std::string> all;
        for (const auto& row : page().shown().running) all.push_back(row.title);
        return all;
    }
    QuestionDialog* question() { return page().findChild<QuestionDialog*>(); }
    QAction* menuItem(const char* text) {
        for (auto* menu : page().findChildren<QMenu*>()) {
            for (auto* action : menu->actions()) {
                if (action->text() == QLatin1String(text)) return action;
            }
        }
        return nullptr;
    }
    void park(const std::string& root, std::size_t commands = 1) {
        ParkedProject project{.root = root, .date = scene.model.now() - Seconds{86'400}};
        for (std::size_t number = 0; number < commands; ++number) {
            project.commands.push_back({.executable = "/usr/bin/npm",
                                        .args = {"npm", "run", "dev" + std::to_string(number)},
                                        .env = {},
                                        .cwd = root});
        }
        auto all = *scene.model.parked;
        all.push_back(std::move(project));
        scene.modelState->parked.set(std::move(all));
        turn();
    }
    void showNothing() { scene.showRows({}); }

    SampleScene scene;
    std::set<std::string> roots;
    std::unique_ptr<ProjectsPage> page_;
};

TEST_F(ProjectsPageTest, listsWhatRuns) {
    EXPECT_FALSE(titles().empty());
    EXPECT_EQ(page().subtitle(), QString::fromStdString(ProjectsView::subtitle(titles().size())));
    EXPECT_EQ(page().runningRow(0).parkButton().text(), QStringLiteral("Park"));
    EXPECT_EQ(page().runningRow(0).parkButton().toolTip(),
              QStringLiteral("Stop everything in this project and remember how to start it again"));
    EXPECT_FALSE(isChosen(page(), "empty"));
}

TEST_F(ProjectsPageTest, saysWhenThereIsNothing) {
    showNothing();
    EXPECT_TRUE(isChosen(page(), "empty"));
    EXPECT_EQ(page().subtitle(), QStringLiteral("0 projects running"));
    park("/home/ada/src/shop");
    EXPECT_FALSE(isChosen(page(), "empty"));
}

TEST_F(ProjectsPageTest, tellsTheToolbarOfAnotherSubtitle) {
    page();
    int changes = 0;
    QObject::connect(&page(), &ProjectsPage::subtitleChanged, [&] { ++changes; });
    showNothing();
    turn();
    EXPECT_EQ(changes, 1);
    scene.showRows({});
    turn();
    EXPECT_EQ(changes, 1);
}

TEST_F(ProjectsPageTest, whatIsBeingParkedCannotBeParkedAgain) {
    auto& shown = page().runningRow(0);
    auto row = shown.row();
    EXPECT_TRUE(shown.parkButton().isEnabled());
    row.isEnding = true;
    shown.show(row);
    EXPECT_FALSE(shown.parkButton().isEnabled());
    row.isEnding = false;
    shown.show(row);
    EXPECT_TRUE(shown.parkButton().isEnabled());
}

TEST_F(ProjectsPageTest, parksAfterAQuestion) {
    const auto root = page().shown().running.front().project.root;
    const auto title = titles().front();
    page().runningRow(0).parkButton().click();
    turn();
    ASSERT_TRUE(question());
    EXPECT_EQ(question()->accessibleName().toStdString(), "Park " + title + "?");
    EXPECT_FALSE(question()->action().property("destructive").toBool());
    question()->cancel().click();
    turn();
    EXPECT_THAT(*scene.model.parked, IsEmpty());
    page().runningRow(0).parkButton().click();
    turn();
    question()->action().click();
    turn();
    ASSERT_EQ(scene.model.parked->size(), 1U);
    EXPECT_EQ(scene.model.parked->front().root, root);
    EXPECT_EQ(page().shown().parked.size(), 1U);
}

TEST_F(ProjectsPageTest, stopsByTheMenuAfterAQuestion) {
    page().runningRow(0).menuButton().click();
    turn();
    ASSERT_TRUE(menuItem("Stop All"));
    menuItem("Stop All")->trigger();
    turn();
    ASSERT_TRUE(question());
    EXPECT_TRUE(question()->action().property("destructive").toBool());
    EXPECT_EQ(question()->action().text(), QStringLiteral("Stop All"));
    question()->action().click();
    turn();
    EXPECT_THAT(*scene.model.parked, IsEmpty());
    EXPECT_EQ(page().view().stopQuestion(), std::nullopt);
}

TEST_F(ProjectsPageTest, opensTheFolderByTheMenu) {
    const auto root = page().shown().running.front().project.root;
    emit page().runningRow(0).menuWanted(QPoint(10, 10));
    turn();
    ASSERT_TRUE(menuItem("Show in Finder"));
    menuItem("Show in Finder")->trigger();
    EXPECT_THAT(scene.fake.world->asked, ::testing::Contains("openFile " + root));
}

TEST_F(ProjectsPageTest, aMenuStaysAboutTheProjectThatItOpenedOn) {
    const auto root = page().shown().running.front().project.root;
    emit page().runningRow(0).menuWanted(QPoint(10, 10));
    turn();
    showNothing();
    turn();
    menuItem("Show in Finder")->trigger();
    EXPECT_THAT(scene.fake.world->asked, ::testing::Contains("openFile " + root));
}

TEST_F(ProjectsPageTest, startsAgainAndForgets) {
    page();
    park("/home/ada/src/shop");
    park("/home/ada/src/blog", 2);
    ASSERT_EQ(page().shown().parked.size(), 2U);
    page().parkedRow(0).startButton().click();
    turn();
    EXPECT_EQ(scene.fake.world->started.size(), 1U);
    ASSERT_EQ(page().shown().parked.size(), 1U);
    page().parkedRow(0).menuButton().click();
    turn();
    ASSERT_TRUE(menuItem("Show Log"));
    EXPECT_FALSE(menuItem("Show Log")->isEnabled());
    menuItem("Forget")->trigger();
    turn();
    EXPECT_THAT(*scene.model.parked, IsEmpty());
    EXPECT_EQ(scene.fake.world->started.size(), 1U);
}

TEST_F(ProjectsPageTest, aCommandCanBeCopiedWhole) {
    page();
    park("/home/ada/src/shop");
    auto* line = page().parkedRow(0).findChild<CopyableLine*>();
    ASSERT_TRUE(line);
    const QString whole = QStringLiteral("npm run ") + QString(300, QLatin1Char('x')) + QStringLiteral(" --end");
    line->setWhole(whole);
    EXPECT_NE(line->text(), whole);
    EXPECT_TRUE(line->text().endsWith(QStringLiteral("--end"))) << "cut in the middle";
    EXPECT_EQ(line->toolTip(), tip(whole));
    line->setFocus();
    turn();
    if (line->hasFocus()) EXPECT_EQ(line->text(), whole);
    EXPECT_EQ(line->accessibleName(), whole);
}

TEST_F(ProjectsPageTest, rowsStandStillUnderTheKeyboard) {
    const auto before = titles();
    ASSERT_GE(before.size(), 2U);
    page().activateWindow();
    page().runningRow(1).parkButton().setFocus();
    turn();
    auto rows = scene.model.snapshot->rows;
    for (auto& row : rows) {
        if (row.project && row.project->str() == page().shown().running[1].project.root) {
            row.sample.footprint += std::uint64_t{64} << 30U;
        }
    }
    scene.showRows(rows);
    turn();
    EXPECT_EQ(titles(), before);
    page().runningRow(1).parkButton().clearFocus();
    scene.showRows(rows);
    turn();
    EXPECT_EQ(titles().front(), before[1]);
}

TEST_F(ProjectsPageTest, hasTheFactsReadWhileItCanBeSeen) {
    auto& world = *scene.fake.world;
    const auto jobs = [&] { return scene.jobs.waiting(); };
    const auto before = jobs();
    page();
    EXPECT_EQ(jobs(), before + 1) << "a reading began";
    page().hide();
    scene.fake.clock->advance(Seconds{60});
    EXPECT_EQ(jobs(), before + 1);
    static_cast<void>(world);
}

TEST_F(ProjectsPageTest, hostileTextsStayWithinTheirRow) {
    auto rows = scene.model.snapshot->rows;
    const std::string root = "/home/ada/" + std::string(5000, 'w') + "\n\xd7\xa9\xd7\x9c\xf0\x9f\x98\x80";
    for (auto& row : rows) {
        if (row.project) row.project = Text(root);
    }
    scene.showRows(rows);
    scene.modelState->branches.set(
        {{root, {.state = {.branch = std::string(10'000, 'b'), .deleted = true}, .remoteGone = true}}});
    page();
    ASSERT_EQ(page().shown().running.size(), 1U);
    EXPECT_LE(page().runningRow(0).width(), page().width());
    EXPECT_LE(page().runningRow(0).menuButton().geometry().right(), page().runningRow(0).width());
}

TEST_F(ProjectsPageTest, aBranchGivesWayBeforeTheMarkAndTheTitle) {
    const auto root = page().shown().running.front().project.root;
    scene.modelState->branches.set({{root, {.state = {.branch = std::string(200, 'b')}, .remoteGone = true}}});
    turn();
    std::vector<ElidedLabel*> elided;
    for (auto* label : page().runningRow(0).findChildren<ElidedLabel*>()) {
        if (label->isVisible() && label->isElided()) elided.push_back(label);
    }
    ASSERT_EQ(elided.size(), 1U);
    EXPECT_EQ(elided.front()->text(), QString(200, QLatin1Char('b')));
}

TEST_F(ProjectsPageTest, everyControlSaysWhatItIsAbout) {
    const auto title = titles().front();
    EXPECT_EQ(page().runningRow(0).parkButton().accessibleName().toStdString(), "Park: " + title);
    EXPECT_EQ(page().runningRow(0).menuButton().accessibleName().toStdString(), "Actions: " + title);
    EXPECT_EQ(page().runningRow(0).accessibleName().toStdString(), title);
}

}  // namespace
}  // namespace tolvane::desktop
