#include "desktop/window/MainWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <memory>
#include <string>
#include <vector>

#include "desktop/look/TolvaneStyle.h"
#include "desktop/processes/ProcessesPage.h"
#include "desktop/program/DesktopWindows.h"
#include "desktop/program/Screens.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class EmptyPage : public Page {
public:
    using Page::Page;
    std::vector<QWidget*> controls() override { return {}; }
};

/// Records every top-level window that is shown from now on, however briefly.
class WindowsShown : public QObject {
public:
    WindowsShown() { QApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Show && widget && widget->isWindow())
            names.emplace_back(widget->metaObject()->className());
        return false;
    }
    std::vector<std::string> names;
};

class MainWindowTest : public ::testing::Test {
protected:
    MainWindowTest() { scene.look.install(); }
    std::vector<Screen> screens() {
        auto all = allScreens(scene.model, scene.look, scene.state, "en_US");
        std::erase_if(all, [](const Screen& each) { return each.section != AppSection::processes; });
        all.push_back({AppSection::rules, [this](QWidget* parent) {
                           ++made;
                           return new EmptyPage(parent);
                       }});
        return all;
    }

    SampleScene scene;
    int made = 0;
};

TEST_F(MainWindowTest, isTheOneThatScriptsAndPlatesKnow) {
    const MainWindow window(scene.model, scene.look, scene.state, screens());
    EXPECT_EQ(window.windowTitle(), "Tolvane");
    EXPECT_EQ(window.objectName(), "main");
    EXPECT_EQ(window.size(), QSize(1040, 640));
    EXPECT_EQ(window.minimumSize(), QSize(900, 480));
}

TEST_F(MainWindowTest, showsOnlySectionsWhoseScreensExist) {
    const MainWindow window(scene.model, scene.look, scene.state, screens());
    const auto* model = window.findChild<Sidebar*>()->model();
    ASSERT_EQ(model->rowCount(), 4);
    EXPECT_EQ(model->index(0, 0).data().toString(), "Now");
    EXPECT_EQ(model->index(1, 0).data().toString(), "Processes");
    EXPECT_EQ(model->index(2, 0).data().toString(), "Automation");
    EXPECT_EQ(model->index(3, 0).data().toString(), "Rules");
    EXPECT_FALSE(model->flags(model->index(0, 0)).testFlag(Qt::ItemIsSelectable));
}

TEST_F(MainWindowTest, makesAScreenWhenItIsFirstShown) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    EXPECT_EQ(made, 0);
    scene.model.show(AppSection::rules);
    scene.model.show(AppSection::processes);
    scene.model.show(AppSection::rules);
    EXPECT_EQ(made, 1);
}

TEST_F(MainWindowTest, noSectionShowsAWindowOfItsOwnWhileItIsMade) {
    MainWindow window(scene.model, scene.look, scene.state, allScreens(scene.model, scene.look, scene.state, "en_US"));
    window.show();
    turnLoop();
    WindowsShown others;
    for (const auto& section : appSections) {
        scene.model.show(section.section);
        turnLoop();
    }
    EXPECT_THAT(others.names, ::testing::IsEmpty());
}

TEST_F(MainWindowTest, theSidebarAndTheModelFollowEachOther) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    auto* sidebar = window.findChild<Sidebar*>();
    sidebar->setCurrentIndex(sidebar->model()->index(3, 0));
    EXPECT_EQ(*scene.model.section, AppSection::rules);
    scene.model.show(AppSection::processes);
    EXPECT_EQ(sidebar->currentIndex().data().toString(), "Processes");
    type(*sidebar, Qt::Key_Down);
    EXPECT_EQ(*scene.model.section, AppSection::rules) << "arrow keys pass over headings";
}

TEST_F(MainWindowTest, aBadgeCountsTheRulesThatAreOn) {
    const MainWindow window(scene.model, scene.look, scene.state, screens());
    const auto* model = window.findChild<Sidebar*>()->model();
    scene.modelState->rules.set({Rule{.enabled = true}, Rule{.enabled = false}});
    EXPECT_EQ(model->index(3, 0).data(Qt::AccessibleTextRole).toString(), "Rules, 1");
    scene.modelState->rules.set({});
    EXPECT_EQ(model->index(3, 0).data(Qt::AccessibleTextRole).toString(), "Rules");
}

TEST_F(MainWindowTest, aBadgeCountsASuggestionAgainOnceItsSnoozeIsOver) {
    auto all = screens();
    all.push_back({AppSection::suggestions, [](QWidget* parent) { return new EmptyPage(parent); }});
    const MainWindow window(scene.model, scene.look, scene.state, all);
    const auto* model = window.findChild<Sidebar*>()->model();
    const auto badge = [model] { return model->index(2, 0).data(Qt::AccessibleTextRole).toString(); };
    scene.modelState->suggestions.set({{.id = "idle|a"}, {.id = "idle|b"}});
    EXPECT_EQ(badge(), "Suggestions, 2");
    scene.modelState->hiddenSuggestions.set({{"idle|a", scene.model.snapshot->date + Seconds{60}}});
    EXPECT_EQ(badge(), "Suggestions, 1");
    auto later = *scene.model.snapshot;
    later.date += Seconds{61};
    scene.modelState->snapshot.set(std::move(later));
    EXPECT_EQ(badge(), "Suggestions, 2");
}

TEST_F(MainWindowTest, aSectionWithoutAScreenLeavesTheOneThatIsShown) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    scene.model.show(AppSection::history);
    EXPECT_TRUE(window.findChild<ProcessesPage*>()->isVisible());
}

TEST_F(MainWindowTest, sizesComeBack) {
    {
        MainWindow window(scene.model, scene.look, scene.state, screens());
        // Small enough for the test's screen, or its size would not be restored.
        window.resize(900, 700);
        window.show();
    }
    const MainWindow again(scene.model, scene.look, scene.state, screens());
    EXPECT_EQ(again.size(), QSize(900, 700));
}

TEST_F(MainWindowTest, comesForwardWhenItIsAskedFor) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    scene.model.open(AppSection::processes);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(MainWindowTest, controlsWrapBelowTheTitleWhenTheyDoNotFit) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    turnLoop();
    auto* toolbar = window.findChild<Toolbar*>();
    const int before = toolbar->height();
    EXPECT_EQ(before, Sizes::toolbarHeight);
    toolbar->setFixedWidth(360);
    turnLoop();
    EXPECT_GT(toolbar->height(), before);
}

TEST_F(MainWindowTest, everyButtonSaysWhatItIs) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty() && button->text().isEmpty())
            << button->metaObject()->className();
    }
}

TEST_F(MainWindowTest, changesItsColoursWithoutARestart) {
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    turnLoop();
    const auto ground = [&] { return window.grab().toImage().pixelColor(400, 30); };
    EXPECT_EQ(ground(), lightTokens.window);
    scene.look.setAppearance({.dark = true});
    turnLoop();
    EXPECT_EQ(ground(), darkTokens.window);
    EXPECT_EQ(window.grab().toImage().pixelColor(5, 600), darkTokens.sidebar);
}

TEST(Look, takesItsStyleAwayWhenItGoes) {
    auto scene = std::make_unique<SampleScene>();
    const QPointer<QStyle> style = QApplication::style();
    ASSERT_NE(dynamic_cast<TolvaneStyle*>(style.data()), nullptr);
    scene.reset();
    EXPECT_EQ(dynamic_cast<TolvaneStyle*>(QApplication::style()), nullptr);
    EXPECT_TRUE(style.isNull());
}

TEST(Look, leavesTheStyleOfALaterOneAlone) {
    auto first = std::make_unique<SampleScene>();
    const SampleScene second;
    const auto* style = QApplication::style();
    first.reset();
    EXPECT_EQ(QApplication::style(), style);
}

TEST_F(MainWindowTest, windowsTellWhetherTheyCanBeSeen) {
    DesktopWindows windows;
    int told = 0;
    const auto subscription = windows.onChange([&] { ++told; });
    EXPECT_FALSE(windows.anyVisible());
    MainWindow window(scene.model, scene.look, scene.state, screens());
    window.show();
    turnLoop();
    EXPECT_TRUE(windows.anyVisible());
    EXPECT_EQ(told, 1);
    window.hide();
    turnLoop();
    EXPECT_FALSE(windows.anyVisible());
    EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace tolvane::desktop
