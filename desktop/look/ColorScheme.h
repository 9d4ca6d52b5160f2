#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <functional>

#include "desktop/look/Appearance.h"

class QDBusPendingCallWatcher;

namespace tolvane::desktop {

/// Follows the desktop's appearance: the settings portal where one answers, else how light the palette is.
/// Never waits longer than a moment for the portal; a late answer arrives as a change. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    /// `changed` is called on every change after construction. Ask before the program sets a palette of its own.
    explicit ColorScheme(std::function<void(Appearance)> changed, QDBusConnection bus = QDBusConnection::sessionBus());

    Appearance appearance() const { return appearance_; }

private slots:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void listen();
    void ask(const QString& key);
    void answered(QDBusPendingCallWatcher* call, const QString& key);
    void take(const QString& key, unsigned value);

    QDBusConnection bus_;
    std::function<void(Appearance)> changed_;
    Appearance appearance_;
};

}  // namespace tolvane::desktop
