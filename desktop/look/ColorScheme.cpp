#include "desktop/look/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace tolvane::desktop {

namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settings = QStringLiteral("org.freedesktop.portal.Settings");
const auto space = QStringLiteral("org.freedesktop.appearance");

/// Long enough for a running portal, too short for anyone to notice one that hangs.
constexpr int patienceMilliseconds = 120;

constexpr unsigned prefersDark = 1, prefersLight = 2;

bool paletteIsDark() {
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

/// The portal of old wraps the value twice.
unsigned number(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

QDBusMessage question(const QString& key) {
    auto message = QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    message << space << key;
    return message;
}

}  // namespace

ColorScheme::ColorScheme(std::function<void(Appearance)> changed, QDBusConnection bus) : bus_(std::move(bus)) {
    appearance_.dark = paletteIsDark();
    listen();
    changed_ = std::move(changed);
}

void ColorScheme::listen() {
    if (!bus_.isConnected()) return;
    // A slot whose argument types are not known by name yet is not connected.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    bus_.connect(service, path, settings, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    for (const auto* key : {"color-scheme", "contrast", "reduced-motion"}) ask(QString::fromLatin1(key));
}

/// A portal that runs answers at once, so that the first window has the right colours; one that has to be started
/// answers later.
void ColorScheme::ask(const QString& key) {
    if (bus_.interface()->isServiceRegistered(service)) {
        const auto reply = bus_.call(question(key), QDBus::Block, patienceMilliseconds);
        if (reply.type() == QDBusMessage::ReplyMessage) take(key, number(reply.arguments().value(0)));
        return;
    }
    auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(question(key)), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, key] { answered(call, key); });
}

void ColorScheme::answered(QDBusPendingCallWatcher* call, const QString& key) {
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (reply.isValid()) take(key, number(reply.value().variant()));
    call->deleteLater();
}

void ColorScheme::settingChanged(const QString& changedSpace, const QString& key, const QDBusVariant& value) {
    if (changedSpace == space) take(key, number(value.variant()));
}

void ColorScheme::take(const QString& key, unsigned value) {
    auto next = appearance_;
    if (key == QLatin1String("color-scheme") && (value == prefersDark || value == prefersLight)) {
        next.dark = value == prefersDark;
    }
    if (key == QLatin1String("contrast")) next.highContrast = value == 1;
    if (key == QLatin1String("reduced-motion")) next.reducedMotion = value == 1;
    if (next == appearance_) return;
    appearance_ = next;
    if (changed_) changed_(appearance_);
}

}  // namespace tolvane::desktop
