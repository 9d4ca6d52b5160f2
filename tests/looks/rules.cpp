// Shows the rules screen on the sample cast and writes it as a picture:
//
//   rules_looks OUT.png [--dark] [--size 1040x640] [--text 2] [--rtl] [--select N] [--scroll end] [--sheet app]
//               [--silent] [--empty]
//
// --select -1 selects none, --sheet shows the sheet for a new rule of that kind, --silent is a host that does not tell
// who is in front. QT_SCALE_FACTOR=2 gives pictures at 2×.

#include <QApplication>
#include <QCommandLineParser>
#include <QScrollBar>
#include <filesystem>

#include "desktop/MainWindow.h"
#include "desktop/NewRuleDialog.h"
#include "desktop/RulesPage.h"
#include "desktop/Screens.h"
#include "desktop/Words.h"
#include "desktop/parts/FocusRing.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleRules.h"
#include "tests/fakes/TemporaryFolder.h"

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

TargetKind kindNamed(const QString& name) {
    for (const auto& each : targetKinds) {
        if (words(each.rawValue) == name) return each.kind;
    }
    return TargetKind::app;
}

int showSheet(const QCommandLineParser& options, SampleScene& scene, const QString& out) {
    NewRuleDialog sheet(scene.model, scene.look, "en_GB", kindNamed(options.value("sheet")), nullptr);
    sheet.setAttribute(Qt::WA_DeleteOnClose, false);
    if (sheet.list().model()->rowCount() > 0) sheet.list().setCurrentIndex(sheet.list().model()->index(0, 0));
    return save(sheet, out);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.addPositionalArgument("picture", "Where the picture goes");
    options.addOptions({{"dark", "Dark scheme"}, {"contrast", "High contrast"}, {"rtl", "Right to left"}});
    options.addOptions({{"size", "Of the window", "WxH", "1040x640"}, {"text", "Text factor", "factor", "1"}});
    options.addOptions({{"select", "Number of the rule", "number", "0"}, {"scroll", "Of the editor", "end"}});
    options.addOptions({{"sheet", "Sheet of that kind", "kind"}, {"silent", "Nobody in front"}, {"empty", "No rules"}});
    options.process(application);
    if (options.isSet("rtl")) QApplication::setLayoutDirection(Qt::RightToLeft);

    SampleScene scene({.dark = options.isSet("dark"), .highContrast = options.isSet("contrast")},
                      options.value("text").toDouble());
    const FocusRing ring(&application);
    auto& world = *scene.fake.world;
    const fakes::TemporaryFolder home;
    std::filesystem::create_directories(home.path() / ".claude/daemon");
    world.home = home.path().string();
    world.canTellFrontmost = !options.isSet("silent");
    const auto sample = fakes::SampleRules::on(scene.model.snapshot->rows, world);
    scene.showRows(sample.rows);
    scene.model.rules.set(options.isSet("empty") ? std::vector<Rule>() : sample.rules);
    const auto out = options.positionalArguments().value(0);
    if (options.isSet("sheet")) return showSheet(options, scene, out);

    const auto number = static_cast<std::size_t>(options.value("select").toInt());
    if (number < scene.model.rules->size()) scene.model.selectedRule.set((*scene.model.rules)[number].id);
    scene.model.section.set(AppSection::rules);
    MainWindow window(scene.model, scene.look, scene.state, allScreens(scene.model, scene.look, scene.state, "en_GB"));
    const auto size = options.value("size").split('x');
    window.resize(size.value(0).toInt(), size.value(1).toInt());
    window.show();
    settle();
    if (options.isSet("scroll")) {
        auto* bar = window.findChild<RulesPage*>()->editor().verticalScrollBar();
        bar->setValue(bar->maximum());
    }
    return save(window, out);
}
