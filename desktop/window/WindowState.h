#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <optional>

namespace tolvane::desktop {

/// Sizes and places of windows and panes, apart from the user's preferences: they change without a decision.
/// One small file in the folder for state; a file that cannot be read or written only means that windows open as new.
class WindowState {
public:
    /// An empty path keeps everything for this run alone.
    explicit WindowState(QString path = {});

    /// "window.ini" in the program's folder for state.
    static QString usualPath();

    QByteArray bytes(const QString& key) const;
    QString text(const QString& key) const;
    bool flag(const QString& key, bool otherwise) const;
    /// Writes only what differs.
    void set(const QString& key, const QVariant& value);

private:
    QVariant value(const QString& key) const;

    QString path_;
    std::map<QString, QVariant> values_;
};

}  // namespace tolvane::desktop
