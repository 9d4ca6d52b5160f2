// Shows one screen on the sample cast and its week of activity, and writes it as a picture:
//
//   screen_looks SECTION OUT.png [--dark] [--size 1040x640] [--text 2] [--rtl] [--empty] [--day N] [--period all]
//
// SECTION is one of the sidebar's, "panel" or "settings". QT_SCALE_FACTOR=2 gives pictures at 2×.

#include <QApplication>
#include <QCommandLineParser>
#include <QKeyEvent>
#include <cstdio>

#include "desktop/MainWindow.h"
#include "desktop/PanelPopup.h"
#include "desktop/Screens.h"
#include "desktop/SettingsWindow.h"
#include "desktop/ShortcutsDialog.h"
#include "desktop/StatsPage.h"
#include "desktop/Words.h"
#include "desktop/parts/FocusRing.h"
#include "desktop/parts/QuestionDialog.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleLog.h"

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

void settle() {
    for (int turns = 0; turns < 20; ++turns) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

int save(QWidget& widget, const QString& path) {
    widget.show();
    settle();
    return widget.grab().save(path) ? 0 : 1;
}

int showSection(const QCommandLineParser& options, SampleScene& scene, AppSection section, const QString& out) {
    MainWindow window(scene.model, scene.look, scene.state, allScreens(scene.model, scene.look, scene.state, "en_GB"));
    const auto size = options.value("size").split('x');
    window.resize(size.value(0).toInt(), size.value(1).toInt());
    scene.model.section.set(section);
    window.show();
    settle();
    if (auto* stats = window.findChild<StatsPage*>(); stats && options.isSet("day")) {
        for (int step = options.value("day").toInt(); step > 0; --step) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_Left, {});
            QApplication::sendEvent(&stats->chart(), &key);
        }
    }
    return save(window, out);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.addPositionalArgument("section", "What to show");
    options.addPositionalArgument("picture", "Where the picture goes");
    options.addOptions({{"dark", "Dark scheme"}, {"rtl", "Right to left"}, {"empty", "Without a log"}});
    options.addOptions({{"size", "Of the window", "WxH", "1040x640"}, {"text", "Text factor", "factor", "1"}});
    options.addOptions({{"day", "Select the day so many days back", "number"}, {"period", "Of stats", "name", "week"}});
    options.addOption({"long", "Entries in the log", "count"});
    options.process(application);
    if (options.isSet("rtl")) QApplication::setLayoutDirection(Qt::RightToLeft);

    SampleScene scene({.dark = options.isSet("dark")}, options.value("text").toDouble());
    const FocusRing ring(&application);
    scene.fake.world->preferences["statsPeriod"] = bytes(options.value("period"));
    const auto now = scene.model.host().clock->now();
    if (!options.isSet("empty")) {
        auto log = fakes::SampleLog::at(now);
        if (options.isSet("long")) log.activity = fakes::SampleLog::longLog(options.value("long").toInt(), now);
        scene.model.rules.set(log.rules);
        scene.model.activity.set(log.activity);
        scene.model.suggestions.set(log.suggestions);
    }
    const auto wanted = bytes(options.positionalArguments().value(0));
    const auto out = options.positionalArguments().value(1);
    if (const auto section = appSectionFromRawValue(wanted)) return showSection(options, scene, *section, out);
    if (wanted == "panel") {
        PanelPopup panel(scene.model, scene.look, "en_GB");
        panel.openAt(QRect(600, 0, 20, 20));
        return save(panel, out);
    }
    if (wanted == "settings") {
        scene.fake.world->loginStatus = LoginStatus::requiresApproval;
        scene.fake.world->syncFolder = "/home/ada/Nextcloud";
        SettingsWindow settings(scene.model, scene.look);
        return save(settings, out);
    }
    if (wanted == "shortcuts") return save(*new ShortcutsDialog(scene.look, nullptr), out);
    if (wanted == "question") {
        const Question question{"Clear the activity log?",
                                "Stats are counted from this log, so they start again from zero.", "Clear Activity"};
        return save(*QuestionDialog::ask(scene.look, question, nullptr), out);
    }
    std::fprintf(stderr, "no such screen\n");
    return 1;
}
