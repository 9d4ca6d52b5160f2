#pragma once

#include <QObject>
#include <QPropertyNotifier>
#include <memory>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/window/WindowLife.h"
#include "base/Subscription.h"
#include "desktop/look/Look.h"
#include "desktop/panel/PanelPopup.h"
#include "desktop/program/Tray.h"
#include "desktop/window/MainWindow.h"
#include "desktop/window/Screen.h"
#include "desktop/window/WindowState.h"

namespace tolvane::desktop {

class SettingsWindow;

/// The program's windows: the main window, the tray icon with its panel, the settings. Opens the main window whenever
/// the model asks for it, and decides whether the program goes on when it closes.
class Shell : public QObject {
    Q_OBJECT

public:
    /// All references outlive the shell. `secondStartOpens` says whether a second start reaches this process and brings
    /// the window back: without that and without a tray, closing the window quits.
    Shell(AppModel& model, Trays& trays, const Look& look, WindowState& state, std::vector<Screen> screens,
          bool secondStartOpens);
    ~Shell() override;

    /// Opens the window. At login it first waits for a tray, since panels come up late, and opens the window only if
    /// there is none.
    void start(bool atLogin);
    /// Raises the main window, opening it if necessary.
    void openWindow();
    bool isWindowShown() const { return window_ && window_->isVisible(); }
    void openSettings();
    void togglePanel(QRect icon);

    Tray& tray() { return tray_; }
    MainWindow* window() const { return window_.get(); }
    PanelPopup* panel() const { return panel_.get(); }
    SettingsWindow* settings() const { return settings_.get(); }

signals:
    /// The program should quit.
    void quitWanted();
    /// The window was closed and deleted while the program goes on.
    void windowGone();

private:
    WindowLife life() const { return {.trayIsShown = tray_.isShown(), .secondStartOpens = secondStartOpens_}; }
    void connectTray();
    void makeWindow();
    void windowClosed();
    void letGoLater();
    void letGo();
    void tellWhereItWent();

    AppModel& model_;
    const Look& look_;
    WindowState& state_;
    std::vector<Screen> screens_;
    bool secondStartOpens_;
    Tray tray_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<PanelPopup> panel_;
    std::unique_ptr<SettingsWindow> settings_;
    Subscription waitForTray_;
    QPropertyNotifier windowRequest_;
};

}  // namespace tolvane::desktop
