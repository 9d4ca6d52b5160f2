#include <QApplication>
#include <QDir>
#include <QLocale>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/AppModel.h"
#include "app/AppPreferences.h"
#include "app/OpenFiles.h"
#include "app/demo/DemoHost.h"
#include "desktop/DesktopWindows.h"
#include "desktop/Screens.h"
#include "desktop/Shell.h"
#include "desktop/Snapshots.h"
#include "desktop/StartUp.h"
#include "desktop/WindowState.h"
#include "desktop/Words.h"
#include "desktop/look/ColorScheme.h"
#include "desktop/look/Look.h"
#include "desktop/parts/FocusRing.h"
#include "platform/linux/FolderLock.h"
#include "platform/linux/QuitSignals.h"
#include "platform/linux/makeLinuxHost.h"

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

/// A second start does not reach this one yet: where no tray leads back to it, the program ends with its window.
constexpr bool secondStartOpens = false;

bool displayPresent() { return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"); }

/// Pictures need no screen, and are to be sharp on every one. A display that cannot be reached is none.
void choosePlatform(bool headless, bool pictures) {
    if (pictures && !qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) qputenv("QT_SCALE_FACTOR", "2");
    if (headless || pictures) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        const bool wayland = !qEnvironmentVariableIsSet("DISPLAY");
        qputenv("QT_QPA_PLATFORM", wayland ? "wayland;offscreen" : "xcb;wayland;offscreen");
    }
}

/// Words are English; figures follow the user's region.
std::string systemLocale() {
    const auto name = QLocale::system().name();
    return name == QLatin1String("C") ? "en_US" : bytes(name);
}

std::string privateFolder(const Host& host) { return host.folders->applicationSupport() + "/Tolvane"; }

/// Two copies on one folder would overwrite each other's files and act twice. Who looks only, or shows the demo, may do
/// so beside one that works.
linuxhost::FolderLock lockFolder(const Host& host, bool pictures) {
    if (pictures || AppPreferences::demo.in(*host.preferences)) return {};
    return linuxhost::FolderLock(privateFolder(host));
}

/// Everything of one run, in the order in which it is made and the reverse of which it ends.
class Program {
public:
    Program(QApplication& application, const StartUp& start, Host host, const QString& pictures)
        : host_(std::move(host)),
          model_(host_, windows_, AppPreferences::demo.in(*host_.preferences)),
          scheme_([this](Appearance appearance) { look_.setAppearance(appearance); }),
          look_(*host_.applications, pictures.isEmpty() ? scheme_.appearance() : Appearance{}),
          state_(pictures.isEmpty() && !model_.demo() ? WindowState::usualPath() : QString()),
          ring_(&application),
          quit_(linuxhost::onQuitSignal([] { QApplication::exit(); })) {
        look_.install();
        const auto screens = allScreens(model_, look_, state_, host_.locale);
        if (!pictures.isEmpty()) {
            const bool dark = host_.preferences->get<bool>(Snapshots::darkKey).value_or(false);
            snapshots_ = std::make_unique<Snapshots>(model_, look_, screens, pictures, dark,
                                                     [](bool written) { QApplication::exit(written ? 0 : 1); });
        } else if (!start.headless && QApplication::platformName() != QLatin1String("offscreen")) {
            shell_ = std::make_unique<Shell>(model_, look_, state_, screens, secondStartOpens);
            /// To end is not to close the windows one by one: closing one may leave the program running.
            QObject::connect(
                shell_.get(), &Shell::quitWanted, &application, [] { QApplication::exit(); }, Qt::QueuedConnection);
            shell_->start(AppPreferences::atLogin.in(*host_.preferences));
        }
        if (pictures.isEmpty()) openFiles(start.files.paths);
    }

private:
    void openFiles(const std::vector<std::string>& paths) {
        OpenFiles::open(model_, paths, [this] {
            if (!shell_ || !shell_->isWindowShown()) return false;
            shell_->openWindow();
            return true;
        });
    }

    Host host_;
    DesktopWindows windows_;
    AppModel model_;
    ColorScheme scheme_;
    Look look_;
    WindowState state_;
    FocusRing ring_;
    Subscription quit_;
    std::unique_ptr<Snapshots> snapshots_;
    std::unique_ptr<Shell> shell_;
};

}  // namespace

int main(int argc, char** argv) {
    const auto start =
        StartUp::of(std::vector<std::string>(argv + 1, argv + argc), displayPresent(), bytes(QDir::currentPath()));
    for (const auto& line : start.complaints()) std::fprintf(stderr, "%s\n", line.c_str());
    auto host = linuxhost::makeLinuxHost(linuxhost::processEnvironment(), start.switches.overrides);
    host.locale = systemLocale();
    if (AppPreferences::demo.in(*host.preferences)) host = Demo::inertHost(std::move(host));
    const auto pictures = start.picturesFolder(*host.preferences);
    const auto lock = lockFolder(host, !pictures.isEmpty());
    if (lock.isAnothers()) {
        std::fprintf(stderr, "tolvane: another copy is running on %s\n", privateFolder(host).c_str());
        return 1;
    }
    choosePlatform(start.headless, !pictures.isEmpty());
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setDesktopFileName(QStringLiteral("dev.tolvane.Tolvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    const Program program(application, start, std::move(host), pictures);
    return QApplication::exec();
}
