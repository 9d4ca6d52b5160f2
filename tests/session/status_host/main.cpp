// A tray like those of most desktops today: watcher and host of status notifier items in one. It reads commands from
// its input, one a line: "activate X Y" clicks the items there and prints "asked", "status" prints the status of each
// item. It prints "item SERVICE" when an item registers.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QSocketNotifier>
#include <QStringList>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

}  // namespace

class StatusHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    bool isHost() const { return true; }
    int protocolVersion() const { return 0; }
    QStringList items() const { return items_; }

    void obey(const std::string& line) {
        const auto words = QString::fromStdString(line).split(QLatin1Char(' '));
        for (const auto& item : items_) {
            if (words.value(0) == QLatin1String("activate"))
                activate(item, words.value(1).toInt(), words.value(2).toInt());
            if (words.value(0) == QLatin1String("status")) status(item);
        }
    }

public slots:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service) {
        const auto item = service.startsWith(QLatin1Char('/')) ? message().service() : service;
        items_ << item;
        std::printf("item %s\n", qPrintable(item));
        std::fflush(stdout);
    }
    Q_SCRIPTABLE void RegisterStatusNotifierHost(const QString& /*service*/) {}

private:
    static QDBusMessage call(const QString& item, const QString& interface, const QString& method) {
        return QDBusMessage::createMethodCall(item, QStringLiteral("/StatusNotifierItem"), interface, method);
    }
    static void activate(const QString& item, int x, int y) {
        auto click = call(item, itemInterface, QStringLiteral("Activate"));
        click << x << y;
        QDBusConnection::sessionBus().call(click, QDBus::Block, 2000);
        std::puts("asked");
        std::fflush(stdout);
    }
    static void status(const QString& item) {
        auto question = call(item, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << itemInterface << QStringLiteral("Status");
        const QDBusReply<QDBusVariant> reply = QDBusConnection::sessionBus().call(question, QDBus::Block, 2000);
        std::printf("status %s\n", qPrintable(reply.value().variant().toString()));
        std::fflush(stdout);
    }

    QStringList items_;
};

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    StatusHost host;
    auto bus = QDBusConnection::sessionBus();
    bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &host,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    if (!bus.registerService(watcherName)) return 1;
    std::puts("ready");
    std::fflush(stdout);
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) return QCoreApplication::exit();
        host.obey(line);
    });
    return QCoreApplication::exec();
}

#include "main.moc"
