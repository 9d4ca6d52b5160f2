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

/// What of the program is on the screen: the main window, the tray's icon with its panel, the settings. Opens the
/// window whenever the model asks for it, and decides what becomes of the program when it closes.
class Shell : public QObject {
    Q_OBJECT

public:
    /// All references outlive it. `secondStartOpens` says whether another start reaches this one and brings the window
    /// back: without that and without a tray, closing the window quits.
    Shell(AppModel& model, Trays& trays, const Look& look, WindowState& state, std::vector<Screen> screens,
          bool secondStartOpens);
    ~Shell() override;

    /// Opens the window. A start by the session waits a moment for a tray, since panels come late at login, and opens
    /// it only where there is none.
    void start(bool atLogin);
    /// Brings the main window to the front, from wherever it was.
    void openWindow();
    bool isWindowShown() const { return window_ && window_->isVisible(); }
    void openSettings();
    void togglePanel(QRect icon);

    Tray& tray() { return tray_; }
    MainWindow* window() const { return window_.get(); }
    PanelPopup* panel() const { return panel_.get(); }
    SettingsWindow* settings() const { return settings_.get(); }

signals:
    /// The program is to end.
    void quitWanted();
    /// The window was closed and is gone with all that it held, while the program goes on.
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
