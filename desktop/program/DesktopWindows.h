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

/// Which windows of the program are visible according to the toolkit, which only knows of minimised and hidden ones. If
/// the host reports covered windows, a fully covered window counts as invisible too. Lives as long as the application
/// object.
class DesktopWindows : public QObject, public Windows {
    Q_OBJECT

public:
    /// `covers` outlives this object; null on hosts that do not report covered windows.
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
