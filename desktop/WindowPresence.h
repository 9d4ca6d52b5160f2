#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace tolvane::desktop {

/// Tells when a window is opened and when it is closed; covering or minimising it is neither. Main thread; goes with
/// the window.
class WindowPresence : public QObject {
    Q_OBJECT

public:
    /// Tells at once how it is now.
    WindowPresence(QWidget& window, std::function<void(bool open)> changed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void take(bool open);

    std::function<void(bool open)> changed_;
    bool open_ = false;
};

}  // namespace tolvane::desktop
