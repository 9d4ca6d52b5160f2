#include "desktop/Tray.h"

#include <QAction>
#include <QMenu>
#include <QSystemTrayIcon>
#include <array>

#include "app/screens/MenuBarLabel.h"
#include "app/screens/MenuBarPanel.h"
#include "desktop/Words.h"

namespace tolvane::desktop {

namespace {

constexpr std::array sizes = {16, 22, 24, 32, 48, 64};

}  // namespace

Tray::Tray(AppModel& model, const Look& look) : model_(model), look_(look), menu_(std::make_unique<QMenu>()) {
    buildMenu();
    connect(&hosts_, &TrayHosts::changed, this, [this] {
        update();
        emit shownChanged();
    });
    connect(&look, &Look::changed, this, &Tray::showState);
    tight_ = model_.memoryTight.onChange([this] { showState(); });
}

Tray::~Tray() = default;

void Tray::buildMenu() {
    menu_->addAction(words(MenuBarPanel::openLabel), this, &Tray::openWanted);
    auto* pause = menu_->addAction(words(MenuBarPanel::pauseLabel));
    pause->setCheckable(true);
    connect(pause, &QAction::triggered, this, [this](bool paused) { model_.rulesPaused.set(paused); });
    connect(menu_.get(), &QMenu::aboutToShow, this, [this, pause] {
        menu_->setStyleSheet(look_.menuSheet());
        pause->setChecked(*model_.rulesPaused);
    });
    menu_->addSeparator();
    menu_->addAction(words(MenuBarPanel::settingsLabel), this, &Tray::settingsWanted);
    menu_->addAction(words(MenuBarPanel::quitLabel), this, &Tray::quitWanted);
}

void Tray::setWanted(bool wanted) {
    wanted_ = wanted;
    update();
    emit shownChanged();
}

/// An icon that was shown over the bus knows that bus alone: the next host gets a new one.
void Tray::setBusThere(bool there) {
    if (hosts_.isOnBus()) icon_.reset();
    hosts_.setBusThere(there);
}

void Tray::update() {
    if (!icon_ && isShown()) makeIcon();
    if (icon_) icon_->setVisible(wanted_);
}

void Tray::makeIcon() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setContextMenu(menu_.get());
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) emit panelWanted(place());
        if (reason == QSystemTrayIcon::MiddleClick) emit openWanted();
    });
    showState();
}

void Tray::showState() {
    if (!icon_) return;
    const auto label = MenuBarLabel::of(*model_.memoryTight);
    icon_->setIcon(iconFor(*model_.memoryTight, look_));
    icon_->setToolTip(words(label.accessibleName));
}

QRect Tray::place() const { return icon_ ? icon_->geometry() : QRect(); }

QIcon Tray::iconFor(bool memoryTight, const Look& look) {
    QIcon icon;
    for (const int size : sizes) {
        icon.addPixmap(look.icons().pixmap(MenuBarLabel::of(memoryTight).symbol, look.tokens().borderStrong, size, 1));
    }
    return icon;
}

}  // namespace tolvane::desktop
