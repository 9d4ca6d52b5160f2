#include <gtest/gtest.h>

#include <QListView>

#include <QApplication>
#include <QFocusFrame>
#include <QLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitterHandle>
#include <memory>
#include <string>
#include <tuple>

#include "app/screens/projects/ProjectsView.h"
#include "desktop/look/QtText.h"
#include "desktop/panel/PanelPopup.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/program/Screens.h"
#include "desktop/projects/ShrinkingRow.h"
#include "desktop/rules/NewRuleDialog.h"
#include "desktop/window/AlertDialog.h"
#include "desktop/window/MainWindow.h"
#include "tests/desktop/DemoScene.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/HostileWorld.h"
#include "tests/desktop/Pointer.h"

namespace tolvane::desktop {
namespace {

struct Manner {
    std::string_view name;
    double text = 1;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

constexpr Manner plain{.name = "plain"}, mirroredLarge{.name = "mirrored", .text = 2, .direction = Qt::RightToLeft};

std::string placeOf(const QWidget& widget) {
    std::string place = widget.metaObject()->className();
    const auto name = utf8(widget.accessibleName().left(40));
    if (!name.empty()) place += " '" + name + "'";
    return place;
}

/// Widgets that overlap others on purpose.
bool isOverlay(const QWidget& widget) {
    return qobject_cast<const QScrollBar*>(&widget) || qobject_cast<const QFocusFrame*>(&widget) ||
           qobject_cast<const QSplitterHandle*>(&widget) || widget.isWindow();
}

bool arranges(const QWidget& widget) { return widget.layout() || qobject_cast<const ShrinkingRow*>(&widget); }

std::vector<QWidget*> shownChildren(const QWidget& parent) {
    std::vector<QWidget*> shown;
    for (auto* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && widget->isVisible() && !isOverlay(*widget) && !widget->size().isEmpty()) shown.push_back(widget);
    }
    return shown;
}

/// Fails if a widget overlaps a sibling, leaves its parent, or is not high enough for its text.
void expectTidy(const QWidget& parent) {
    const auto children = shownChildren(parent);
    for (std::size_t one = 0; one < children.size(); ++one) {
        const auto& child = *children[one];
        if (arranges(parent)) {
            EXPECT_TRUE(parent.rect().contains(child.geometry()))
                << placeOf(child) << " leaves " << placeOf(parent) << ": " << child.geometry().x() << ' '
                << child.geometry().y() << ' ' << child.width() << 'x' << child.height() << " in " << parent.width()
                << 'x' << parent.height();
            for (std::size_t other = one + 1; other < children.size(); ++other) {
                EXPECT_FALSE(child.geometry().intersects(children[other]->geometry()))
                    << placeOf(child) << " and " << placeOf(*children[other]) << " in " << placeOf(parent);
            }
        }
        if (const auto* words = qobject_cast<const ParagraphLabel*>(&child)) {
            EXPECT_GE(words->height(), words->heightForWidth(words->width())) << placeOf(child);
        }
        expectTidy(child);
    }
}

void settle(QWidget& widget) {
    widget.show();
    for (int turn = 0; turn < 6; ++turn) QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
}

class HostileWorldTest : public ::testing::TestWithParam<std::tuple<HostileWorld::Named, Manner>> {
protected:
    HostileWorldTest() : manner(std::get<1>(GetParam())) {
        QApplication::setLayoutDirection(manner.direction);
        scene = std::make_unique<DemoScene>(Appearance{}, manner.text);
        HostileWorld::become(*scene->modelState, std::get<0>(GetParam()).kind);
    }
    ~HostileWorldTest() override {
        scene.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }
    HostileWorldTest(const HostileWorldTest&) = delete;
    HostileWorldTest& operator=(const HostileWorldTest&) = delete;

    void expectOnScreen(QWidget& dialog) const {
        settle(dialog);
        EXPECT_LE(dialog.height(), 640 * manner.text) << placeOf(dialog);
        EXPECT_LE(dialog.width(), 640 * manner.text) << placeOf(dialog);
        expectTidy(dialog);
    }

    Manner manner;
    std::unique_ptr<DemoScene> scene;
};

TEST_P(HostileWorldTest, nothingOverlapsOnAnyScreen) {
    auto& model = scene->model;
    MainWindow window(model, scene->look, scene->state, allScreens(model, scene->look, scene->state, "en_US"));
    window.resize(Sizes::windowLeastWidth, Sizes::windowLeastHeight);
    for (const auto& screen : allScreens(model, scene->look, scene->state, "en_US")) {
        SCOPED_TRACE(traits(screen.section).title);
        model.show(screen.section);
        settle(window);
        expectTidy(window);
        EXPECT_FALSE(window.grab().isNull());
    }
}

TEST_P(HostileWorldTest, whatIsSelectedIsShownWhole) {
    auto& model = scene->model;
    MainWindow window(model, scene->look, scene->state, allScreens(model, scene->look, scene->state, "en_US"));
    window.resize(Sizes::windowLeastWidth, Sizes::windowLeastHeight);
    std::set<std::string> all;
    for (const auto& line : TableRow::build(model.snapshot->rows, Grouping::apps, 1, model.rowNames())) {
        model.selectRows({line.id});
        settle(window);
        expectTidy(window);
        all.insert(line.id);
        if (all.size() > 3) break;
    }
    model.selectRows(all);
    settle(window);
    expectTidy(window);
}

TEST_P(HostileWorldTest, questionsAndSheetsStayOnTheScreen) {
    auto& model = scene->model;
    const auto question = [&](const std::string& name) {
        return Question{.title = "Force quit " + name + "?",
                        .message = "Unsaved work in " + name + " will be lost.",
                        .action = "Force Quit"};
    };
    std::string name = "node";
    if (!model.snapshot->rows.empty()) name = model.snapshot->rows.front().sample.name.str();
    auto* asked = QuestionDialog::ask(scene->look, question(name), nullptr, "6 processes");
    expectOnScreen(*asked);
    delete asked;
    AlertDialog alert(scene->look, qtText("Added 1 rule from " + name + "."), "OK", nullptr);
    alert.setAttribute(Qt::WA_DeleteOnClose, false);
    expectOnScreen(alert);
    for (const auto& each : targetKinds) {
        NewRuleDialog sheet(model, scene->look, "en_US", each.kind, nullptr);
        sheet.setAttribute(Qt::WA_DeleteOnClose, false);
        if (widgetNamed<QListView>(sheet, "suggestions").model()->rowCount() > 0)
            widgetNamed<QListView>(sheet, "suggestions")
                .setCurrentIndex(widgetNamed<QListView>(sheet, "suggestions").model()->index(0, 0));
        expectOnScreen(sheet);
    }
}

TEST_P(HostileWorldTest, thePanelIsTidy) {
    PanelPopup panel(scene->model, scene->look, "en_US");
    panel.openAt(QRect(600, 0, 20, 20));
    settle(panel);
    expectTidy(panel);
}

std::string nameOf(const ::testing::TestParamInfo<HostileWorldTest::ParamType>& parameter) {
    return std::string(std::get<0>(parameter.param).name) + "_" + std::string(std::get<1>(parameter.param).name);
}

INSTANTIATE_TEST_SUITE_P(Worlds, HostileWorldTest,
                         ::testing::Combine(::testing::ValuesIn(HostileWorld::kinds),
                                            ::testing::Values(plain, mirroredLarge)),
                         nameOf);

}  // namespace
}  // namespace tolvane::desktop
