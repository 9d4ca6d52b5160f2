#pragma once

#include <QObject>
#include <QPropertyNotifier>
#include <memory>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/parts/IconButton.h"

class QAction;
class QMenu;

namespace tolvane::desktop {

/// The commands of the main window, available in a button's menu and by shortcuts anywhere in the window.
class WindowMenu : public QObject {
    Q_OBJECT

public:
    /// `model` and `look` outlive the menu; `window` owns it.
    WindowMenu(AppModel& model, const Look& look, QWidget* window);
    ~WindowMenu() override;

    IconButton& button() const { return *button_; }
    QMenu& menu() const { return *menu_; }

signals:
    void settingsWanted();
    void shortcutsWanted();
    void quitWanted();

private:
    QAction* add(std::string_view text, const QKeySequence& keys = {});
    void addRuleCommands();
    void open();

    AppModel& model_;
    QWidget* window_;
    std::unique_ptr<QMenu> menu_;
    IconButton* button_;
    QPropertyNotifier rules_;
};

}  // namespace tolvane::desktop
