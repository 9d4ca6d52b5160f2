#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "platform/Windows.h"

class QWindow;

namespace tolvane::desktop {

/// Which windows of the program can be seen. On X11 a window that others cover altogether is not; elsewhere only the
/// toolkit knows, which hears of minimised and hidden windows alone. Lives as long as the application object.
class DesktopWindows : public QObject, public Windows, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    DesktopWindows();
    ~DesktopWindows() override;

    bool anyVisible() const override;
    Subscription onChange(std::function<void()> changed) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Observers = std::map<int, std::function<void()>>;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    bool isSeen(const QWindow& window) const;
    void watch(QWindow& window);
    void tellLater();
    void tell();

    /// By the display server's number: windows that asked for news of being covered, and those that are.
    std::set<unsigned> watched_;
    std::set<unsigned> covered_;
    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
    int nextObserver_ = 0;
    bool seen_ = false;
    bool waiting_ = false;
};

}  // namespace tolvane::desktop
