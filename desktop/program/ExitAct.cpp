#include "desktop/program/ExitAct.h"

#include <QString>
#include <QtGlobal>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace tolvane::desktop {

namespace {

/// Two of the toolkit's threads can report a broken connection, and either ends the process; both must wait until the
/// act is done. Recursive because the act may cause such a report itself.
std::recursive_mutex doing;
/// The only state that the exit handlers can reach; null when there is nothing to do. Guarded by `doing`.
const std::function<void()>* present = nullptr;

void doIt() {
    const std::lock_guard lock(doing);
    if (const auto* act = std::exchange(present, nullptr)) (*act)();
}

void expect(const std::function<void()>* act) {
    const std::lock_guard lock(doing);
    present = act;
}

/// The message handler that was installed before ours.
std::atomic<QtMessageHandler> passOn = nullptr;

void hear(QtMsgType type, const QMessageLogContext& where, const QString& message) {
    if (message.startsWith(QLatin1String("The Wayland connection "))) doIt();
    if (const auto next = passOn.load()) next(type, where, message);
}

}  // namespace

ExitAct::ExitAct(std::function<void()> act) : act_(std::move(act)) {
    static const bool isAsked = std::atexit(&doIt) == 0;
    if (isAsked) expect(&act_);
    passOn = qInstallMessageHandler(&hear);
}

ExitAct::~ExitAct() {
    qInstallMessageHandler(passOn);
    expect(nullptr);
}

}  // namespace tolvane::desktop
