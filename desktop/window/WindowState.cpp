#include "desktop/window/WindowState.h"

#include <QDir>
#include <QSettings>
#include <QVariant>
#include <utility>

namespace tolvane::desktop {

WindowState::WindowState(QString path) : path_(std::move(path)) {
    if (path_.isEmpty()) return;
    const QSettings file(path_, QSettings::IniFormat);
    for (const auto& key : file.allKeys()) values_.emplace(key, file.value(key));
}

QString WindowState::usualPath() {
    const auto given = qEnvironmentVariable("XDG_STATE_HOME");
    const auto folder = QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/Tolvane/window.ini");
}

QVariant WindowState::value(const QString& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? QVariant() : found->second;
}

QByteArray WindowState::bytes(const QString& key) const { return value(key).toByteArray(); }

QString WindowState::text(const QString& key) const { return value(key).toString(); }

bool WindowState::flag(const QString& key, bool otherwise) const {
    const auto found = value(key);
    return found.isValid() ? found.toBool() : otherwise;
}

void WindowState::set(const QString& key, const QVariant& changed) {
    auto& present = values_[key];
    if (present == changed) return;
    present = changed;
    if (!path_.isEmpty()) QSettings(path_, QSettings::IniFormat).setValue(key, changed);
}

}  // namespace tolvane::desktop
