#pragma once

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QObject>
#include <cstdint>

class QDBusServiceWatcher;

namespace tolvane::desktop {

/// Whether the desktop has a place for icons now: a host of status notifier items on the session bus, or a tray of the
/// X server. Tells when one comes or goes; nothing is polled and nothing waits for an answer. Main thread.
class TrayHosts : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    TrayHosts();
    ~TrayHosts() override;

    bool present() const { return onBus_ || onServer_; }
    /// The host that is present is one of the bus.
    bool isOnBus() const { return onBus_; }
    /// The session bus was lost, or another took its place, which has to be asked anew.
    void setBusThere(bool there);

signals:
    void changed();

private slots:
    void askBus();
    void leaveBus();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void watchBus();
    void watchServer();
    void readServer();
    void set(bool onBus, bool onServer);

    QDBusConnection bus_;
    QDBusServiceWatcher* watcher_ = nullptr;
    bool onBus_ = false;
    bool onServer_ = false;
    int renewals_ = 0;
    /// Of the X server: the selection that a tray owns, the announcement of a new one, and the owner's window.
    std::uint32_t selection_ = 0, manager_ = 0, owner_ = 0;
};

}  // namespace tolvane::desktop
