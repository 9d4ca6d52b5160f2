// Shows every screen, sheet and question on one world, and writes a picture of each into a folder:
//
//   world_looks FOLDER [--world endless] [--dark] [--rtl] [--size 1040x640] [--text 2]
//
// The demo's world unless one of the hostile ones is named. QT_SCALE_FACTOR=2 gives pictures at 2×.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <cstdio>

#include "app/screens/ProjectsView.h"
#include "desktop/MainWindow.h"
#include "desktop/NewRuleDialog.h"
#include "desktop/PanelPopup.h"
#include "desktop/ProcessesPage.h"
#include "desktop/ProjectsPage.h"
#include "desktop/RulesPage.h"
#include "desktop/Screens.h"
#include "desktop/SettingsWindow.h"
#include "desktop/ShortcutsDialog.h"
#include "desktop/Words.h"
#include "desktop/parts/AlertDialog.h"
#include "desktop/parts/FocusRing.h"
#include "desktop/parts/QuestionDialog.h"
#include "tests/desktop/DemoScene.h"
#include "tests/desktop/HostileWorld.h"

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

class Pictures {
public:
    explicit Pictures(QString folder) : folder_(std::move(folder)) { QDir().mkpath(folder_); }

    void take(QWidget& widget, const QString& name) {
        widget.show();
        for (int turns = 0; turns < 20; ++turns) QApplication::processEvents(QEventLoop::AllEvents, 10);
        const auto path = folder_ + QLatin1Char('/') + name + QStringLiteral(".png");
        if (!widget.grab().save(path)) std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    }

private:
    QString folder_;
};

std::vector<Line> linesOf(AppModel& model) {
    return Line::build(model.snapshot->rows, Grouping::apps, model.snapshot->memory.compressionRatio,
                       model.lineNames());
}

void takeProcesses(Pictures& pictures, DemoScene& scene, MainWindow& window) {
    auto& model = scene.model;
    model.section.set(AppSection::processes);
    const auto lines = linesOf(model);
    model.selectedLines.set({});
    pictures.take(window, "processes-none");
    if (lines.empty()) return;
    model.selectedLines.set({lines.front().id});
    pictures.take(window, "processes-group");
    for (const auto& line : lines) {
        if (line.children) continue;
        model.selectedLines.set({line.id});
        pictures.take(window, "processes-process");
        break;
    }
    std::set<std::string> several;
    for (const auto& line : lines) several.insert(line.id);
    model.selectedLines.set(several);
    window.findChild<ProcessesPage*>()->table().expandAll();
    pictures.take(window, "processes-several");
    model.selectedLines.set({});
}

void takeRules(Pictures& pictures, DemoScene& scene, MainWindow& window) {
    auto& model = scene.model;
    model.section.set(AppSection::rules);
    int number = 0;
    for (const auto& rule : std::vector<Rule>(*model.rules)) {
        model.selectedRule.set(rule.id);
        pictures.take(window, QStringLiteral("rules-%1").arg(++number));
    }
    for (const auto& each : targetKinds) {
        NewRuleDialog sheet(model, scene.look, "en_US", each.kind, nullptr);
        sheet.setAttribute(Qt::WA_DeleteOnClose, false);
        if (sheet.list().model()->rowCount() > 0) sheet.list().setCurrentIndex(sheet.list().model()->index(0, 0));
        pictures.take(sheet, QStringLiteral("sheet-") + words(each.rawValue));
    }
}

void takeQuestions(Pictures& pictures, DemoScene& scene) {
    const auto take = [&](const Question& question, const QString& name) {
        auto* dialog = QuestionDialog::ask(scene.look, question, nullptr);
        pictures.take(*dialog, name);
        delete dialog;
    };
    auto& model = scene.model;
    ProcessesView view(model, "en_US");
    const auto lines = linesOf(model);
    if (!lines.empty()) {
        view.askForceQuit({lines.front().id}, lines);
        if (const auto question = view.forceQuitQuestion()) take(*question, "question-force-quit");
    }
    ProjectsView projects(model, "en_US", "UTC");
    const auto content = projects.content();
    if (!content.running.empty()) {
        projects.askPark(content.running.front().project);
        if (const auto question = projects.parkQuestion()) take(*question, "question-park");
    }
    if (!model.rules->empty()) {
        AlertDialog alert(scene.look, words("Added 1 rule from " + model.rules->front().name + "."), "OK", nullptr);
        alert.setAttribute(Qt::WA_DeleteOnClose, false);
        pictures.take(alert, "alert");
    }
}

void takeWindows(Pictures& pictures, DemoScene& scene) {
    PanelPopup panel(scene.model, scene.look, "en_US");
    panel.openAt(QRect(600, 0, 20, 20));
    pictures.take(panel, "panel");
    SettingsWindow settings(scene.model, scene.look);
    pictures.take(settings, "settings");
    ShortcutsDialog shortcuts(scene.look, nullptr);
    shortcuts.setAttribute(Qt::WA_DeleteOnClose, false);
    pictures.take(shortcuts, "shortcuts");
}

void addOptions(QCommandLineParser& options) {
    options.addPositionalArgument("folder", "Where the pictures go");
    options.addOptions({{"dark", "Dark scheme"}, {"rtl", "Right to left"}, {"world", "Which one", "name"}});
    options.addOptions({{"size", "Of the window", "WxH", "1040x640"}, {"text", "Text factor", "factor", "1"}});
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    addOptions(options);
    options.process(application);
    if (options.isSet("rtl")) QApplication::setLayoutDirection(Qt::RightToLeft);
    DemoScene scene({.dark = options.isSet("dark")}, options.value("text").toDouble());
    const FocusRing ring(&application);
    for (const auto& each : HostileWorld::kinds) {
        if (words(each.name) == options.value("world")) HostileWorld::become(scene.model, each.kind);
    }
    Pictures pictures(options.positionalArguments().value(0));
    MainWindow window(scene.model, scene.look, scene.state, allScreens(scene.model, scene.look, scene.state, "en_US"));
    const auto size = options.value("size").split('x');
    window.resize(size.value(0).toInt(), size.value(1).toInt());
    for (const auto section : {AppSection::projects, AppSection::suggestions, AppSection::history, AppSection::stats,
                               AppSection::activity}) {
        scene.model.section.set(section);
        pictures.take(window, words(traits(section).rawValue));
    }
    takeProcesses(pictures, scene, window);
    takeRules(pictures, scene, window);
    takeQuestions(pictures, scene);
    takeWindows(pictures, scene);
    return 0;
}
