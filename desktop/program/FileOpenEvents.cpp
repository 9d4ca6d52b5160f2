#include "desktop/program/FileOpenEvents.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <utility>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

FileOpenEvents::FileOpenEvents(Open open) : open_(std::move(open)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool FileOpenEvents::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FileOpen || watched != QCoreApplication::instance()) return false;
    const auto path = static_cast<QFileOpenEvent*>(event)->file();
    if (path.isEmpty()) return false;
    open_({utf8(path)});
    return true;
}

}  // namespace tolvane::desktop
