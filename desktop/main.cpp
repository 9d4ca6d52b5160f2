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
#include "app/LookingHost.h"
#include "app/demo/DemoHost.h"
#include "desktop/DesktopWindows.h"
#include "desktop/OutsideRequests.h"
#include "desktop/Screens.h"
#include "desktop/Shell.h"
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

/// What a run is for. Pictures and the demo stand beside the program that works, and touch nothing of it.
struct Purpose {
    bool demo = false;
    /// The folder to draw into; empty for a run that works.
    QString pictures;

    bool draws() const { return !pictures.isEmpty(); }
    bool works() const { return !demo && !draws(); }
};

/// Another start for the same session hands over what it is to open and is done: its exit status. None for the one that
/// runs.
std::optional<int> statusOfSecondStart(linuxhost::SingleInstance& instance, const StartUp& start, bool& isReachable) {
    using Outcome = linuxhost::SingleInstance::Outcome;
    const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"));
    const auto outcome = instance.settle({.files = start.files.paths}, bytes(token));
    isReachable = outcome == Outcome::first;
    if (outcome == Outcome::handedOver) return 0;
    if (outcome != Outcome::silent) return std::nullopt;
    std::fputs("tolvane: it runs already and does not answer\n", stderr);
    return 1;
}

/// Two copies on one folder would overwrite each other's files and act twice; without a bus only the folder can tell.
std::optional<int> statusOfSecondCopy(const FolderLock& lock, const std::string& folder) {
    if (!lock.isAnothers()) return std::nullopt;
    std::fprintf(stderr, "tolvane: another copy is running on %s\n", folder.c_str());
    return 1;
}

/// Everything of one run, in the order in which it is made and the reverse of which it ends.
class Program {
public:
    Program(QApplication& application, Host host, const Purpose& purpose)
        : application_(application),
          host_(std::move(host)),
          model_(host_, windows_, purpose.demo),
          scheme_([this](Appearance appearance) { look_.setAppearance(appearance); }),
          look_(*host_.applications, purpose.draws() ? Appearance{} : scheme_.appearance()),
          state_(purpose.works() ? WindowState::usualPath() : QString()),
          ring_(&application),
          quit_(linuxhost::onQuitSignal([] { QApplication::quit(); })) {
        look_.install();
    }

    void draw(const QString& folder) {
        const bool dark = host_.preferences->get<bool>(Snapshots::darkKey).value_or(false);
        snapshots_ = std::make_unique<Snapshots>(model_, look_, screens(), folder, dark,
                                                 [](bool written) { QApplication::exit(written ? 0 : 1); });
    }
    void show(bool isReachable) {
        shell_ = std::make_unique<Shell>(model_, look_, state_, screens(), isReachable);
        QObject::connect(shell_.get(), &Shell::quitWanted, &application_, &QApplication::quit, Qt::QueuedConnection);
        shell_->start(AppPreferences::atLogin.in(*host_.preferences));
    }
    void answer(linuxhost::SingleInstance& instance, const std::vector<std::string>& files) {
        outside_ = std::make_unique<OutsideRequests>(
            model_, OutsideRequests::Window{.bringForward =
                                                [this] {
                                                    if (shell_) shell_->openWindow();
                                                },
                                            .isShown = [this] { return shell_ && shell_->isWindowShown(); }});
        requests_ = instance.onRequest([this](const linuxhost::SingleInstance::Request& request) {
            if (request.files.empty()) return outside_->show(request.action);
            outside_->openFiles(request.files);
        });
        outside_->openFiles(files);
    }

private:
    std::vector<Screen> screens() { return allScreens(model_, look_, state_, host_.locale); }

    QApplication& application_;
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
    std::unique_ptr<OutsideRequests> outside_;
    Subscription requests_;
};

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
    host.locale = systemLocale();
    const Purpose purpose{.demo = AppPreferences::demo.in(*host.preferences),
                          .pictures = start.picturesFolder(*host.preferences)};
    std::optional<QTemporaryDir> copies;
    if (purpose.demo) host = Demo::inertHost(std::move(host));
    if (purpose.draws()) host = lookingHost(std::move(host), bytes(copies.emplace().path()));

    linuxhost::SingleInstance instance(bus);
    bool isReachable = false;
    const auto folder = host.folders->applicationSupport() + "/Tolvane";
    if (purpose.works()) {
        if (const auto status = statusOfSecondStart(instance, start, isReachable)) return *status;
    }
    const auto lock = purpose.works() ? FolderLock(folder) : FolderLock();
    if (const auto status = statusOfSecondCopy(lock, folder)) return *status;

    choosePlatform(start.headless, purpose.draws());
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setDesktopFileName(QStringLiteral("dev.tolvane.Tolvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    Program program(application, std::move(host), purpose);
    if (purpose.draws()) {
        program.draw(purpose.pictures);
    } else {
        const bool hasScreen = !start.headless && QApplication::platformName() != QLatin1String("offscreen");
        if (hasScreen) program.show(isReachable);
        program.answer(instance, start.files.paths);
    }
    return QApplication::exec();
}
