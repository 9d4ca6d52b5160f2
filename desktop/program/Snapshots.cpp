#include "desktop/program/Snapshots.h"

#include <QApplication>
#include <QDir>
#include <cstdio>
#include <ranges>
#include <set>
#include <utility>

#include "app/screens/processes/ProcessesView.h"
#include "desktop/look/QtText.h"
#include "desktop/panel/PanelPopup.h"
#include "desktop/rules/NewRuleDialog.h"
#include "desktop/settings/SettingsWindow.h"

namespace tolvane::desktop {

namespace {

constexpr Seconds demoWait{1}, realWait{8};
/// Charts repaint some turns of the event loop after they got their values.
constexpr int turnsToSettle = 5;

void settle() {
    for (int turn = 0; turn < turnsToSettle; ++turn)
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
}

bool save(QWidget& widget, const QString& path) {
    settle();
    if (widget.grab().save(path)) return true;
    std::fprintf(stderr, "tolvane: cannot write %s\n", qPrintable(path));
    return false;
}

}  // namespace

Snapshots::Snapshots(AppModel& model, Look& look, std::vector<Screen> screens, QString folder, bool dark,
                     std::function<void(bool)> done)
    : model_(model),
      look_(look),
      screens_(std::move(screens)),
      folder_(std::move(folder)),
      dark_(dark),
      done_(std::move(done)),
      window_(std::make_unique<MainWindow>(model, look, state_, screens_)),
      wait_(model.clock().after(model.demo() ? demoWait : realWait, Seconds{0}, [this] { render(); })) {
    window_->show();
}

void Snapshots::render() {
    bool written = QDir().mkpath(folder_);
    written = written && renderScheme(look_.appearance().dark);
    if (written && dark_ && !look_.appearance().dark) written = renderScheme(true);
    if (written) std::printf("Pictures of the screens are in %s\n", qPrintable(QDir(folder_).absolutePath()));
    std::fflush(stdout);
    done_(written);
}

bool Snapshots::renderScheme(bool dark) {
    auto appearance = look_.appearance();
    const bool was = std::exchange(appearance.dark, dark);
    look_.setAppearance(appearance);
    suffix_ = dark && !was ? QStringLiteral("-dark.png") : QStringLiteral(".png");
    const bool sections = renderSections();
    return renderSheets() && sections;
}

bool Snapshots::renderSections() {
    bool written = true;
    for (const auto& screen : screens_) {
        model_.show(screen.section);
        // Selecting a rule opens the editor.
        if (screen.section == AppSection::rules && !model_.rules->empty()) {
            model_.selectRule(model_.rules->front().id);
        }
        written = write(*window_, qtText(traits(screen.section).rawValue)) && written;
    }
    return written;
}

bool Snapshots::renderSheets() {
    const auto& locale = model_.locale();
    NewRuleDialog apps(model_, look_, locale, TargetKind::app, nullptr);
    NewRuleDialog agents(model_, look_, locale, TargetKind::agent, nullptr);
    SettingsWindow settings(model_, look_);
    PanelPopup panel(model_, look_, locale);
    bool written = write(apps, QStringLiteral("newrule"));
    written = write(agents, QStringLiteral("newrule-agents")) && written;
    written = write(settings, QStringLiteral("settings")) && written;
    written = renderSelection() && written;
    panel.openAt(QRect());
    return write(panel, QStringLiteral("menubar")) && written;
}

/// Renders the table with its three largest rows selected.
bool Snapshots::renderSelection() {
    const auto rows =
        ProcessesView::rowsOf(*model_.snapshot, Grouping::apps, {}, {{.field = RowField::memory, .ascending = false}},
                              model_.rowNames(), model_.locale());
    std::set<std::string> ids;
    for (const auto& row : rows | std::views::take(3)) ids.insert(row.id);
    const auto before = *model_.selectedRows;
    model_.show(AppSection::processes);
    model_.selectRows(std::move(ids));
    const bool written = write(*window_, QStringLiteral("selection"));
    model_.selectRows(before);
    return written;
}

bool Snapshots::write(QWidget& widget, const QString& name) {
    widget.show();
    widget.activateWindow();
    return save(widget, folder_ + '/' + name + suffix_);
}

}  // namespace tolvane::desktop
