#include "desktop/look/ColorScheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusContext>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QPalette>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <atomic>
#include <memory>

#include "desktop/look/Palette.h"

namespace tolvane::desktop {

/// A settings portal of our own on a bus of our own.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    std::atomic<unsigned> colorScheme = 0;

public slots:
    QDBusVariant Read(const QString&, const QString& key) {
        const unsigned value = key == QLatin1String("color-scheme") ? colorScheme.load() : 0;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }
};

namespace {

class PrivateBus {
public:
    PrivateBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead(3000)) address_ = daemon_.readLine().trimmed();
    }
    ~PrivateBus() {
        daemon_.terminate();
        daemon_.waitForFinished(3000);
    }
    QDBusConnection connect(const QString& name) const { return QDBusConnection::connectToBus(address_, name); }
    bool runs() const { return !address_.isEmpty(); }

private:
    QProcess daemon_;
    QString address_;
};

class ColorSchemeTest : public ::testing::Test {
protected:
    ColorSchemeTest() : before_(QApplication::palette()) {}
    ~ColorSchemeTest() override {
        portalThread_.quit();
        portalThread_.wait();
        QApplication::setPalette(before_);
        for (const auto* name : {"portal", "program"}) QDBusConnection::disconnectFromBus(name);
    }

    /// Answers from a thread of its own, as another program would.
    void startPortal() {
        portal.moveToThread(&portalThread_);
        portalThread_.start();
        auto connection = bus.connect("portal");
        connection.registerObject("/org/freedesktop/portal/desktop", &portal, QDBusConnection::ExportAllSlots);
        ASSERT_TRUE(connection.registerService("org.freedesktop.portal.Desktop"));
    }
    void announce(const char* key, unsigned value) {
        auto signal = QDBusMessage::createSignal("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                                                 "SettingChanged");
        signal << QString("org.freedesktop.appearance") << QString(key) << QVariant::fromValue(QDBusVariant(value));
        bus.connect("portal").send(signal);
    }
    template <typename Condition>
    static bool waitFor(Condition condition) {
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 3000 && !condition();) QApplication::processEvents({}, 20);
        return condition();
    }

    PrivateBus bus;
    FakePortal portal;

private:
    QPalette before_;
    QThread portalThread_;
};

TEST_F(ColorSchemeTest, withoutAPortalThePaletteDecides) {
    const QDBusConnection nowhere("no such connection");
    QApplication::setPalette(palette(darkTokens));
    EXPECT_TRUE(ColorScheme({}, nowhere).appearance().dark);
    QApplication::setPalette(palette(lightTokens));
    EXPECT_FALSE(ColorScheme({}, nowhere).appearance().dark);
}

TEST_F(ColorSchemeTest, aRunningPortalIsHeardBeforeTheFirstWindow) {
    if (!bus.runs()) GTEST_SKIP() << "no dbus-daemon";
    portal.colorScheme = 1;
    startPortal();
    EXPECT_TRUE(ColorScheme({}, bus.connect("program")).appearance().dark);
    portal.colorScheme = 2;
    EXPECT_FALSE(ColorScheme({}, bus.connect("program")).appearance().dark);
}

TEST_F(ColorSchemeTest, changesArriveWhileTheProgramRuns) {
    if (!bus.runs()) GTEST_SKIP() << "no dbus-daemon";
    startPortal();
    Appearance latest;
    const ColorScheme scheme([&](Appearance appearance) { latest = appearance; }, bus.connect("program"));
    announce("color-scheme", 1);
    EXPECT_TRUE(waitFor([&] { return latest.dark; }));
    announce("contrast", 1);
    EXPECT_TRUE(waitFor([&] { return latest.highContrast; }));
    announce("color-scheme", 2);
    EXPECT_TRUE(waitFor([&] { return !latest.dark && latest.highContrast; }));
}

}  // namespace
}  // namespace tolvane::desktop

#include "ColorSchemeTests.moc"
