#include "desktop/Snapshots.h"

#include <QApplication>
#include <QDir>
#include <cstdio>
#include <utility>

#include "desktop/Words.h"

namespace tolvane::desktop {

namespace {

constexpr Seconds demoWait{1}, realWait{8};
/// Charts draw themselves a moment after they got their figures.
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
      wait_(model.host().clock->after(model.demo() ? demoWait : realWait, Seconds{0}, [this] { render(); })) {
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
    return renderSections(dark && !was ? QStringLiteral("-dark.png") : QStringLiteral(".png"));
}

bool Snapshots::renderSections(const QString& suffix) {
    bool written = true;
    for (const auto& screen : screens_) {
        model_.section.set(screen.section);
        written = save(*window_, folder_ + '/' + words(traits(screen.section).rawValue) + suffix) && written;
    }
    return written;
}

}  // namespace tolvane::desktop
