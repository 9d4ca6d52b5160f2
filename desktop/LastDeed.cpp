#include "desktop/LastDeed.h"

#include <QString>
#include <QtGlobal>
#include <atomic>
#include <cstdlib>
#include <utility>

namespace tolvane::desktop {

namespace {

/// The only state that the end of the process can reach; null while there is nothing to do.
std::atomic<const std::function<void()>*> present = nullptr;

void doIt() {
    if (const auto* deed = present.exchange(nullptr)) (*deed)();
}

/// Whoever heard the toolkit's messages before.
std::atomic<QtMessageHandler> passOn = nullptr;

void hear(QtMsgType type, const QMessageLogContext& where, const QString& message) {
    if (message.startsWith(QLatin1String("The Wayland connection "))) doIt();
    if (const auto next = passOn.load()) next(type, where, message);
}

}  // namespace

LastDeed::LastDeed(std::function<void()> deed) : deed_(std::move(deed)) {
    static const bool isAsked = std::atexit(&doIt) == 0;
    if (isAsked) present = &deed_;
    passOn = qInstallMessageHandler(&hear);
}

LastDeed::~LastDeed() {
    qInstallMessageHandler(passOn);
    present = nullptr;
}

}  // namespace tolvane::desktop
