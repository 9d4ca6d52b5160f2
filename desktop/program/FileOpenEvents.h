#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

namespace tolvane::desktop {

/// Files that the desktop passes to the running program, as macOS does when one is double-clicked or dropped on the
/// icon. Main thread; must not outlive the application object.
class FileOpenEvents : public QObject {
    Q_OBJECT

public:
    using Open = std::function<void(const std::vector<std::string>& paths)>;

    explicit FileOpenEvents(Open open);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Open open_;
};

}  // namespace tolvane::desktop
