#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "platform/WindowCovers.h"
#include "platform/Windows.h"

class QWindow;

namespace tolvane::desktop {

/// Which windows of the program can be seen, as the toolkit knows it: it hears of minimised and hidden windows alone.
/// Where the host reports covers, a window that others cover altogether is not seen either. Lives as long as the
/// application object.
class DesktopWindows : public QObject, public Windows {
    Q_OBJECT

public:
    /// `covers` outlives this; null where the host does not report them.
    explicit DesktopWindows(WindowCovers* covers = nullptr);

    bool anyVisible() const override;
    Subscription onChange(std::function<void()> changed) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Observers = std::map<int, std::function<void()>>;

    bool isSeen(const QWindow& window) const;
    void watch(QWindow& window);
    void tellLater();
    void tell();

    WindowCovers* covers_;
    std::set<WindowCovers::Window> watched_;
    Subscription coverNews_;
    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
    int nextObserver_ = 0;
    bool seen_ = false;
    bool waiting_ = false;
};

}  // namespace tolvane::desktop
