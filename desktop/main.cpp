#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/AppModel.h"
#include "app/AppPreferences.h"
#include "app/OpenFiles.h"
#include "app/demo/DemoHost.h"
#include "desktop/DesktopWindows.h"
#include "desktop/MainWindow.h"
#include "desktop/OutsideRequests.h"
#include "desktop/Screens.h"
#include "desktop/Snapshots.h"
#include "desktop/StartUp.h"
#include "desktop/WindowState.h"
#include "desktop/Words.h"
#include "desktop/look/ColorScheme.h"
#include "desktop/look/Look.h"
#include "desktop/parts/FocusRing.h"
#include "platform/FolderLock.h"
#include "platform/linux/QuitSignals.h"
#include "platform/linux/bus/SingleInstance.h"
#include "platform/linux/makeLinuxHost.h"

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

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
FolderLock lockFolder(const Host& host, bool pictures) {
    if (pictures || AppPreferences::demo.in(*host.preferences)) return {};
    return FolderLock(privateFolder(host));
}

/// Everything of one run, in the order in which it is made and the reverse of which it ends.
class Program {
public:
    Program(QApplication& application, const StartUp& start, Host host, const QString& pictures,
            linuxhost::SingleInstance& instance)
        : host_(std::move(host)),
          model_(host_, windows_, AppPreferences::demo.in(*host_.preferences)),
          scheme_([this](Appearance appearance) { look_.setAppearance(appearance); }),
          look_(*host_.applications, pictures.isEmpty() ? scheme_.appearance() : Appearance{}),
          state_(pictures.isEmpty() && !model_.demo() ? WindowState::usualPath() : QString()),
          ring_(&application),
          quit_(linuxhost::onQuitSignal([] { QApplication::quit(); })) {
        look_.install();
        const auto screens = allScreens(model_, look_, state_, host_.locale);
        if (!pictures.isEmpty()) {
            const bool dark = host_.preferences->get<bool>(Snapshots::darkKey).value_or(false);
            snapshots_ = std::make_unique<Snapshots>(model_, look_, screens, pictures, dark,
                                                     [](bool written) { QApplication::exit(written ? 0 : 1); });
        } else if (!start.headless && QApplication::platformName() != QLatin1String("offscreen")) {
            window_ = std::make_unique<MainWindow>(model_, look_, state_, screens);
            window_->show();
        }
        outside_ = std::make_unique<OutsideRequests>(
            model_, OutsideRequests::Window{.bringForward = [this] { bringForward(); },
                                            .isShown = [this] { return window_ && window_->isVisible(); }});
        requests_ = instance.onRequest([this](const linuxhost::SingleInstance::Request& request) {
            if (request.files.empty()) return outside_->show(request.action);
            openFiles(request.files);
        });
    }

    void openFiles(const std::vector<std::string>& files) { outside_->openFiles(files); }

private:
    void bringForward() {
        if (window_) window_->bringForward();
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
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<OutsideRequests> outside_;
    Subscription requests_;
};

/// Another start for the same session hands over what it is to open and is done: its exit status. None for the one that
/// runs.
std::optional<int> statusOfSecondStart(linuxhost::SingleInstance& instance, const std::vector<std::string>& files) {
    using Outcome = linuxhost::SingleInstance::Outcome;
    const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"));
    const auto outcome = instance.settle({.files = files}, bytes(token));
    if (outcome == Outcome::handedOver) return 0;
    if (outcome != Outcome::silent) return std::nullopt;
    std::fputs("tolvane: it runs already and does not answer\n", stderr);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const auto start =
        StartUp::of(std::vector<std::string>(argv + 1, argv + argc), displayPresent(), bytes(QDir::currentPath()));
    for (const auto& line : start.complaints()) std::fprintf(stderr, "%s\n", line.c_str());
    const auto environment = linuxhost::processEnvironment();
    const auto bus = linuxhost::sessionBus(environment);
    auto host = linuxhost::makeLinuxHost(
        environment, start.switches.overrides,
        {.bus = bus, .copyText = [](const std::string& text) { QApplication::clipboard()->setText(words(text)); }});
    const bool demo = AppPreferences::demo.in(*host.preferences);
    if (demo) host = Demo::inertHost(std::move(host));
    const auto pictures = start.picturesFolder(*host.preferences);
    const auto opened = OpenFiles::among(start.switches.words, bytes(QDir::currentPath()));
    for (const auto& word : opened.others) std::fprintf(stderr, "tolvane: no such file: %s\n", word.c_str());
    linuxhost::SingleInstance instance(bus);
    // Pictures and the demo stand beside the program that runs.
    if (!demo && pictures.isEmpty()) {
        if (const auto status = statusOfSecondStart(instance, opened.paths)) return *status;
    }
    choosePlatform(start.headless, !pictures.isEmpty());
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setDesktopFileName(QStringLiteral("dev.tolvane.Tolvane"));
    QApplication::setQuitOnLastWindowClosed(pictures.isEmpty());
    Program program(application, start, std::move(host), pictures, instance);
    program.openFiles(opened.paths);
    return QApplication::exec();
}
