// Shows the real screens on the sample cast and writes them as pictures, for looking at them while they are made:
//
//   looks OUT.png [--dark] [--contrast] [--size 1040x640] [--text 2] [--select ID] [--search TEXT] [--expand] [--rtl]
//         [--rows N] [--scene hostile] [--inspector no] [--show]
//
// QT_SCALE_FACTOR=2 gives pictures at 2×.

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <cstdio>

#include "desktop/MainWindow.h"
#include "desktop/ProcessesPage.h"
#include "desktop/Words.h"
#include "desktop/parts/FocusRing.h"
#include "tests/desktop/SampleScene.h"

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

void parse(QCommandLineParser& parser, const QApplication& application) {
    parser.addPositionalArgument("picture", "Where the picture goes");
    parser.addOptions({{"dark", "Dark scheme"}, {"contrast", "High contrast"}, {"rtl", "Right to left"}});
    parser.addOptions({{"size", "Of the window", "WxH", "1040x640"}, {"text", "Text factor", "factor", "1"}});
    parser.addOptions({{"select", "Selected line", "id"}, {"search", "Searched text", "text"}});
    parser.addOptions({{"rows", "That many rows of a crowd", "count"}, {"scene", "hostile", "name"}});
    parser.addOptions({{"inspector", "no for none", "word", "yes"}, {"show", "Stay open"}, {"expand", "All groups"}});
    parser.addOption({"ticks", "New figures twice a second"});
    parser.process(application);
}

void addHostileNames(std::vector<ProcRow>& rows) {
    const auto copy = [&](Pid pid, const std::string& name, const std::string& project) {
        auto row = rows.front();
        row.sample.pid = pid;
        row.sample.name = Text(name);
        row.sample.path = Text("/opt/tool");
        row.appBundlePath.reset();
        row.sample.footprint += static_cast<std::uint64_t>(pid) << 34U;
        row.project = project.empty() ? std::nullopt : std::optional(Text(project));
        rows.push_back(row);
    };
    copy(4194301, std::string(300, 'm'), "");
    copy(2, "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xD7\xA2\xD7\x95\xD7\x9C\xD7\x9D", "/home/ada/Developer/x");
    copy(3, "\xF0\x9F\x8E\x89 party \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBB", "/home/ada/\xF0\x9F\x8E\x89");
    copy(4, "tab\tnew\nline \x01\xFF broken", "/home/ada/" + std::string(200, 'p'));
    copy(5, "<b>not bold</b> &amp;", "");
}

std::vector<ProcRow> rowsFor(const QCommandLineParser& options, const Snapshot& cast) {
    auto rows =
        options.isSet("rows") ? fakes::SampleCast::crowd(options.value("rows").toInt(), 0, cast.date) : cast.rows;
    if (options.value("scene") == "hostile") addHostileNames(rows);
    return rows;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser options;
    parse(options, application);
    if (options.isSet("rtl")) QApplication::setLayoutDirection(Qt::RightToLeft);

    SampleScene scene({.dark = options.isSet("dark"), .highContrast = options.isSet("contrast")},
                      options.value("text").toDouble());
    auto& model = scene.model;
    scene.look.install();
    const FocusRing ring(&application);
    scene.state.set("processes/inspector", options.value("inspector") != "no");
    scene.showRows(rowsFor(options, *model.snapshot));
    if (options.isSet("select")) {
        std::set<std::string> ids;
        for (const auto& id : options.value("select").split(',')) ids.insert(bytes(id));
        model.selectedLines.set(ids);
    }

    ProcessesPage* page = nullptr;
    MainWindow window(model, scene.look, scene.state, {{AppSection::processes, [&](QWidget* parent) {
                                                            page = new ProcessesPage(model, scene.look, scene.state,
                                                                                     "en_GB", parent);
                                                            return page;
                                                        }}});
    const auto size = options.value("size").split('x');
    window.resize(size.value(0).toInt(), size.value(1).toInt());
    window.show();
    if (options.isSet("search")) page->searchField().setText(options.value("search"));
    if (options.isSet("expand")) page->table().expandAll();
    QTimer ticker;
    int turn = 0;
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        scene.showRows(fakes::SampleCast::crowd(options.value("rows").toInt(), ++turn, model.snapshot->date));
    });
    if (options.isSet("ticks")) ticker.start(500);
    if (options.isSet("show")) return QApplication::exec();
    for (int turns = 0; turns < 20; ++turns) QApplication::processEvents(QEventLoop::AllEvents, 10);
    const auto out = options.positionalArguments().value(0);
    const bool saved = window.grab().save(out);
    std::printf("%s\n", saved ? qPrintable(out) : "cannot write the picture");
    return saved ? 0 : 1;
}
