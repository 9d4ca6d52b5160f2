#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <optional>

namespace tolvane::desktop {

/// Sizes and positions of windows and panes. Kept apart from the user's preferences because they change without an
/// explicit choice. Stored in one small file in the state folder; if it cannot be read or written, windows simply open
/// with default sizes.
class WindowState {
public:
    /// With an empty path, everything is kept for this run only.
    explicit WindowState(QString path = {});

    /// "window.ini" in the program's state folder.
    static QString usualPath();

    QByteArray bytes(const QString& key) const;
    QString text(const QString& key) const;
    bool flag(const QString& key, bool otherwise) const;
    /// Writes only if the value differs.
    void set(const QString& key, const QVariant& value);

private:
    QVariant value(const QString& key) const;

    QString path_;
    std::map<QString, QVariant> values_;
};

}  // namespace tolvane::desktop
