#pragma once

#include <QObject>
#include <functional>
#include <set>

namespace tolvane::desktop {

/// Reports when the program's main window opens and closes, however late it is created; covering or minimising it
/// counts as neither. Main thread; must not outlive the application object.
class WindowPresence : public QObject {
    Q_OBJECT

public:
    /// Calls `changed` with the current state at once, even if the window does not exist yet.
    explicit WindowPresence(std::function<void(bool open)> changed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(bool open)> changed_;
    std::set<const QObject*> open_;
};

}  // namespace tolvane::desktop
