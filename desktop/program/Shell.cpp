#include "desktop/program/Shell.h"

#include <QDialog>
#include <QPixmapCache>
#include <algorithm>
#include <utility>

#include "app/preferences/AppPreferences.h"
#include "desktop/settings/SettingsWindow.h"

namespace tolvane::desktop {

namespace {

/// How long the last panel may take to come up after the session starts, on a slow disk.
constexpr Seconds trayPatience{15};
const auto toldKey = QStringLiteral("main/toldWhereItWent");

}  // namespace

Shell::Shell(AppModel& model, Trays& trays, const Look& look, WindowState& state, std::vector<Screen> screens,
             bool secondStartOpens)
    : model_(model),
      look_(look),
      state_(state),
      screens_(std::move(screens)),
      secondStartOpens_(secondStartOpens),
      tray_(model, trays, look) {
    connectTray();
    windowRequest_ = model_.windowRequest.onChange([this] { openWindow(); });
    tray_.setWanted(AppPreferences::showTrayIcon.in(model_.preferences()));
}

Shell::~Shell() = default;

void Shell::connectTray() {
    connect(&tray_, &Tray::panelWanted, this, &Shell::togglePanel);
    connect(&tray_, &Tray::openWanted, this, &Shell::openWindow);
    connect(&tray_, &Tray::settingsWanted, this, &Shell::openSettings);
    connect(&tray_, &Tray::quitWanted, this, &Shell::quitWanted);
}

void Shell::start(bool atLogin) {
    if (!atLogin) return openWindow();
    if (!life().opensAtStart(atLogin)) return;
    const auto stopWaiting = [this] {
        if (tray_.isShown()) waitForTray_ = {};
    };
    connect(&tray_, &Tray::shownChanged, this, stopWaiting);
    waitForTray_ = model_.clock().after(trayPatience, Seconds{1}, [this] { openWindow(); });
}

void Shell::makeWindow() {
    window_ = std::make_unique<MainWindow>(model_, look_, state_, screens_);
    connect(window_.get(), &MainWindow::closed, this, &Shell::windowClosed);
    connect(window_.get(), &MainWindow::settingsWanted, this, &Shell::openSettings);
    connect(window_.get(), &MainWindow::quitWanted, this, &Shell::quitWanted);
}

void Shell::openWindow() {
    waitForTray_ = {};
    if (!window_) makeWindow();
    window_->bringForward();
}

void Shell::windowClosed() {
    switch (life().afterClosing()) {
        case WindowLife::Closing::stays:
            return letGoLater();
        case WindowLife::Closing::staysUnseen:
            letGoLater();
            return tellWhereItWent();
        case WindowLife::Closing::quits:
            emit quitWanted();
    }
}

/// Queued: a window must not be deleted while it emits its closed signal.
void Shell::letGoLater() { QMetaObject::invokeMethod(this, &Shell::letGo, Qt::QueuedConnection); }

/// A closed window is unlikely to come back soon, and it holds most of the program's memory. It stays if it was
/// reopened meanwhile or still has a question open.
void Shell::letGo() {
    const auto isOpen = [](const QDialog* dialog) { return dialog->isVisible(); };
    if (!window_ || window_->isVisible() || std::ranges::any_of(window_->findChildren<QDialog*>(), isOpen)) return;
    window_.reset();
    QPixmapCache::clear();
    emit windowGone();
}

/// Shown only once ever: reading it once is enough.
void Shell::tellWhereItWent() {
    if (state_.flag(toldKey, false) || !model_.canNotify()) return;
    state_.set(toldKey, true);
    model_.notify(std::string(WindowLife::unseenTitle), std::string(WindowLife::unseenText), std::nullopt);
}

void Shell::openSettings() {
    if (!settings_) {
        settings_ = std::make_unique<SettingsWindow>(model_, look_);
        connect(settings_.get(), &SettingsWindow::trayIconWanted, &tray_, &Tray::setWanted);
    }
    settings_->bringForward();
}

void Shell::togglePanel(QRect icon) {
    if (!panel_) {
        panel_ = std::make_unique<PanelPopup>(model_, look_, model_.locale());
        connect(panel_.get(), &PanelPopup::settingsWanted, this, &Shell::openSettings);
        connect(panel_.get(), &PanelPopup::quitWanted, this, &Shell::quitWanted);
    }
    panel_->toggle(icon);
}

}  // namespace tolvane::desktop
