#pragma once

#include <QMainWindow>
#include <QPropertyNotifier>
#include <map>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/window/RuleFileDialogs.h"
#include "desktop/window/Screen.h"
#include "desktop/window/Sidebar.h"
#include "desktop/window/Toolbar.h"
#include "desktop/window/WindowState.h"

class QSplitter;
class QStackedWidget;

namespace tolvane::desktop {

class WindowMenu;

/// The main window: the sidebar, the toolbar and the screen of the model's section.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `model`, `look` and `state` outlive the window. `screens` may be in any order and need not cover every section.
    MainWindow(AppModel& model, const Look& look, WindowState& state, std::vector<Screen> screens);
    ~MainWindow() override;

    /// Raises the window, restoring it if it is minimised.
    void bringForward();

signals:
    /// The user closed the window.
    void closed();
    void settingsWanted();
    void quitWanted();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Accepts rule files dropped on the window.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildPanes();
    QWidget* buildSidebarColumn();
    void addShortcuts();
    void showShortcuts();
    void connectModel();
    void restoreLayout();
    void saveLayout();
    void showSidebar();
    void showSection(AppSection section);
    Page* page(AppSection section);

    AppModel& model_;
    const Look& look_;
    WindowState& state_;
    std::vector<Screen> screens_;
    std::vector<AppSection> present_;
    std::map<AppSection, Page*> pages_;
    QSplitter* splitter_;
    Sidebar* sidebar_;
    WindowMenu* menu_;
    Toolbar* toolbar_;
    QStackedWidget* stack_;
    Page* shown_ = nullptr;
    RuleFileDialogs ruleFiles_;
    std::vector<QPropertyNotifier> notifiers_;
};

}  // namespace tolvane::desktop
