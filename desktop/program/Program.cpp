#include "desktop/program/Program.h"

#include <utility>

#include "app/preferences/AppPreferences.h"
#include "desktop/program/DesktopWindows.h"
#include "desktop/program/Screens.h"

namespace tolvane::desktop {

namespace {

/// The host cannot see windows that are rendered offscreen, so the toolkit is asked instead.
std::unique_ptr<Windows> windowsOf(Host& host) {
    if (host.windows && QGuiApplication::platformName() != QLatin1String("offscreen")) return std::move(host.windows);
    return std::make_unique<DesktopWindows>(host.covers.get());
}

}  // namespace

Program::Program(QApplication& application, Host host, const Purpose& purpose)
    : application_(application),
      host_(std::move(host)),
      windows_(windowsOf(host_)),
      model_(host_, *windows_, purpose.demo),
      exitAct_([this] { model_.prepareToQuit(); }),
      zoneLook_(model_.snapshot.onChange([this] { zone_.follow(); })),
      scheme_([this](Appearance appearance) { look_.setAppearance(appearance); }, host_.appearance.get()),
      look_(*host_.applications, purpose.draws() ? Appearance{} : scheme_.appearance(), 1, host_.symbols.get()),
      state_(purpose.works() ? WindowState::usualPath() : QString()),
      ring_(&application) {
    look_.install();
}

std::vector<Screen> Program::screens() { return allScreens(model_, look_, state_, host_.locale); }

void Program::draw(const QString& folder) {
    const bool dark = host_.preferences->get<bool>(Snapshots::darkKey).value_or(false);
    snapshots_ = std::make_unique<Snapshots>(model_, look_, screens(), folder, dark,
                                             [](bool written) { QApplication::exit(written ? 0 : 1); });
}

Shell& Program::show(bool isReachable, bool atLogin) {
    if (shell_) return *shell_;
    // Must precede the first window.
    if (host_.dock) {
        presence_ = std::make_unique<WindowPresence>([dock = host_.dock.get()](bool open) { dock->setInDock(open); });
    }
    shell_ = std::make_unique<Shell>(model_, *host_.trays, look_, state_, screens(), isReachable);
    // Exits directly instead of closing the windows, since closing the last one may keep the program running.
    QObject::connect(
        shell_.get(), &Shell::quitWanted, &application_, [] { QApplication::exit(); }, Qt::QueuedConnection);
    shell_->start(atLogin || AppPreferences::atLogin.in(*host_.preferences));
    return *shell_;
}

OutsideRequests& Program::answer(const std::vector<std::string>& files) {
    const auto bringForward = [this] {
        if (shell_) shell_->openWindow();
    };
    const auto isShown = [this] { return shell_ && shell_->isWindowShown(); };
    outside_ = std::make_unique<OutsideRequests>(
        model_, *host_.notifications, OutsideRequests::Window{.bringForward = bringForward, .isShown = isShown});
    // Opens the window to show the result, even if the file is what started the program.
    handedOver_ = std::make_unique<FileOpenEvents>([this](const auto& paths) {
        show(true);
        outside_->openFiles(paths);
    });
    outside_->openFiles(files);
    return *outside_;
}

}  // namespace tolvane::desktop
