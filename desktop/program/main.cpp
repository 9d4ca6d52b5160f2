#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/demo/DemoHost.h"
#include "app/demo/ReadOnlyHost.h"
#include "app/preferences/AppPreferences.h"
#include "base/files/FolderLock.h"
#include "desktop/look/QtText.h"
#include "desktop/program/Invocation.h"
#include "desktop/program/Program.h"

#if defined(__APPLE__)
#include "platform/macos/applications/Launch.h"
#include "platform/macos/dispatch/MacClock.h"
#include "platform/macos/dispatch/QuitSignals.h"
#include "platform/macos/makeMacHost.h"
#else
#include "platform/linux/bus/SingleInstance.h"
#include "platform/linux/machine/OwnMemory.h"
#include "platform/linux/makeLinuxHost.h"
#include "platform/linux/session/QuitSignals.h"
#endif

using namespace tolvane;
using namespace tolvane::desktop;

namespace {

// The only place that chooses the host.
#if defined(__APPLE__)
bool displayPresent() { return true; }
QByteArray windowSystems() { return "cocoa"; }

void runOnMain(std::function<void()> job) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(job), Qt::QueuedConnection);
}

Subscription onQuitSignal(const std::function<void()>& asked) {
    return machost::onQuitSignal(machost::appleCalls().dispatch, &runOnMain, asked);
}

/// macOS starts no second copy of an application, and delivers files itself.
class Machine {
public:
    explicit Machine(const Invocation& start)
        : host_(machost::makeMacHost(LayeredPreferences::layer(start.switches.overrides), &runOnMain)) {}

    Host takeHost() { return std::move(host_); }
    static bool isReachable() { return true; }
    static std::optional<int> statusOfSecondStart(const Invocation& /*start*/) { return std::nullopt; }
    static Subscription forward(OutsideRequests& /*outside*/) { return {}; }
    /// Whether the program was started at login is known only once the event loop runs.
    void whenStarted(std::function<void(bool atLogin)> started) {
        launch_.emplace(machost::appleCalls().runtime, clock_, std::move(started));
    }
    /// macOS reclaims unused memory by itself.
    static void giveBackMemory() {}

private:
    Host host_;
    machost::MacClock clock_{machost::appleCalls().dispatch, &runOnMain};
    std::optional<machost::Launch> launch_;
};
#else
bool displayPresent() { return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"); }
QByteArray windowSystems() {
    return qEnvironmentVariableIsSet("DISPLAY") ? "xcb;wayland;offscreen" : "wayland;offscreen";
}

using linuxhost::onQuitSignal;
using linuxhost::SingleInstance;

void copyText(const std::string& text) { QApplication::clipboard()->setText(qtText(text)); }
bool drawsOnX11() { return QApplication::platformName() == QLatin1String("xcb"); }

/// Uses the session bus to detect a second start.
class Machine {
public:
    explicit Machine(const Invocation& start)
        : environment_(linuxhost::processEnvironment()),
          bus_(linuxhost::sessionBus(environment_)),
          host_(linuxhost::makeLinuxHost(environment_, LayeredPreferences::layer(start.switches.overrides),
                                         {.bus = bus_, .copyText = &copyText, .drawsOnX11 = &drawsOnX11})),
          instance_(bus_) {}

    Host takeHost() { return std::move(host_); }
    bool isReachable() const { return outcome_ == SingleInstance::Outcome::first; }
    /// The exit status of a second start in the same session, after it handed over its files or failed to. Nullopt if
    /// this start is the one that keeps running.
    std::optional<int> statusOfSecondStart(const Invocation& start) {
        const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"));
        outcome_ = instance_.settle({.files = start.files.paths}, utf8(token));
        if (outcome_ == SingleInstance::Outcome::handedOver) return 0;
        if (outcome_ != SingleInstance::Outcome::silent) return std::nullopt;
        std::fputs("tolvane: it runs already and does not answer\n", stderr);
        return 1;
    }
    Subscription forward(OutsideRequests& outside) {
        return instance_.onRequest([&outside](const SingleInstance::Request& request) {
            if (request.files.empty()) return outside.show(request.action);
            outside.openFiles(request.files);
        });
    }
    /// A start at login is marked in the preferences.
    static void whenStarted(const std::function<void(bool atLogin)>& started) { started(false); }
    static void giveBackMemory() { linuxhost::OwnMemory::giveBack(); }

private:
    linuxhost::Environment environment_;
    std::shared_ptr<linuxhost::SessionBus> bus_;
    Host host_;
    SingleInstance instance_;
    SingleInstance::Outcome outcome_ = SingleInstance::Outcome::alone;
};
#endif

/// Configures an offscreen screen for rendering, large enough for the tallest picture and sharp at every pixel ratio,
/// in a file in `folder`. Returns the platform plug-in to use.
QByteArray screenForPictures(const QString& folder) {
    QFile file(folder + QStringLiteral("/screen.json"));
    if (!file.open(QIODevice::WriteOnly)) return "offscreen";
    file.write(R"({"screens": [{"name": "pictures", "x": 0, "y": 0, "width": 4000, "height": 4000,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    return "offscreen:configfile=" + QFile::encodeName(file.fileName());
}

/// The offscreen plug-in warns at length about everything it does not support; drop those messages.
void passOverTheMadeUpScreen(QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

/// With several window systems named, Qt falls back to the next one if a display cannot be reached.
void choosePlatform(bool headless, const std::optional<QTemporaryDir>& scratch) {
    if (scratch && !qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) qputenv("QT_SCALE_FACTOR", "2");
    if (scratch) {
        qInstallMessageHandler(&passOverTheMadeUpScreen);
        qputenv("QT_QPA_PLATFORM", screenForPictures(scratch->path()));
    } else if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", windowSystems());
    }
}

/// Texts are English; numbers follow the user's region.
std::string systemLocale() {
    const auto name = QLocale::system().name();
    return name == QLatin1String("C") ? "en_US" : utf8(name);
}

/// Two copies on one folder would overwrite each other's files and act twice. Where nothing else detects a second copy,
/// the folder's lock does.
std::optional<int> statusOfSecondCopy(const FolderLock& lock, const std::string& folder) {
    if (!lock.isAnothers()) return std::nullopt;
    std::fprintf(stderr, "tolvane: another copy is running on %s\n", folder.c_str());
    return 1;
}

int run(QApplication& application, Machine& machine, Host host, const Invocation& start, const Purpose& purpose) {
    Program program(application, std::move(host), purpose);
    const auto quit = onQuitSignal([] { QApplication::exit(); });
    if (purpose.draws()) {
        program.draw(purpose.pictures);
        return QApplication::exec();
    }
    if (!start.headless && QApplication::platformName() != QLatin1String("offscreen")) {
        machine.whenStarted([&](bool atLogin) {
            auto& shell = program.show(machine.isReachable(), atLogin);
            QObject::connect(&shell, &Shell::windowGone, &application, [] { Machine::giveBackMemory(); });
        });
    }
    const auto requests = machine.forward(program.answer(start.files.paths));
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const auto start =
        Invocation::of(std::vector<std::string>(argv + 1, argv + argc), displayPresent(), utf8(QDir::currentPath()));
    for (const auto& line : start.complaints()) std::fprintf(stderr, "%s\n", line.c_str());
    Machine machine(start);
    auto host = machine.takeHost();
    host.locale = systemLocale();
    const Purpose purpose{.demo = AppPreferences::demo.in(*host.preferences),
                          .pictures = start.picturesFolder(*host.preferences)};
    std::optional<QTemporaryDir> scratch;
    if (purpose.draws()) scratch.emplace();
    if (purpose.demo) host = Demo::inertHost(std::move(host));
    if (scratch && !purpose.demo) host = readOnlyHost(std::move(host), utf8(scratch->path()));

    const auto folder = host.folders->applicationSupport() + "/Tolvane";
    if (purpose.works()) {
        if (const auto status = machine.statusOfSecondStart(start)) return *status;
    }
    const auto lock = purpose.works() ? FolderLock(folder) : FolderLock();
    if (const auto status = statusOfSecondCopy(lock, folder)) return *status;

    choosePlatform(start.headless, scratch);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setDesktopFileName(QStringLiteral("dev.tolvane.Tolvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    return run(application, machine, std::move(host), start, purpose);
}
