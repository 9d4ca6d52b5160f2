#pragma once

#include <QObject>
#include <functional>
#include <set>

namespace tolvane::desktop {

/// Tells when the program's main window is opened and when it is closed, however late it is made; covering or
/// minimising it is neither. Main thread; lives no longer than the application object.
class WindowPresence : public QObject {
    Q_OBJECT

public:
    /// Tells at once how it is now, whether or not the window has been made yet.
    explicit WindowPresence(std::function<void(bool open)> changed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(bool open)> changed_;
    std::set<const QObject*> open_;
};

}  // namespace tolvane::desktop
