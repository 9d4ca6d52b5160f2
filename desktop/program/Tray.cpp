#include "desktop/program/Tray.h"

#include <QAction>
#include <QMenu>
#include <QSystemTrayIcon>
#include <array>
#include <utility>

#include "app/screens/panel/PanelView.h"
#include "app/screens/panel/TrayLabel.h"
#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

constexpr std::array sizes = {16, 22, 24, 32, 48, 64};

}  // namespace

Tray::Tray(AppModel& model, Trays& trays, const Look& look)
    : model_(model), look_(look), trays_(trays), menu_(std::make_unique<QMenu>()) {
    buildMenu();
    news_ = trays_.onChange([this] {
        update();
        emit shownChanged();
    });
    connect(&look, &Look::changed, this, &Tray::showState);
    tight_ = model_.memoryTight.onChange([this] { showState(); });
}

Tray::~Tray() = default;

void Tray::buildMenu() {
    menu_->addAction(qtText(PanelView::openLabel), this, &Tray::openWanted);
    auto* pause = menu_->addAction(qtText(PanelView::pauseLabel));
    pause->setCheckable(true);
    connect(pause, &QAction::triggered, this, [this](bool paused) { model_.pauseRules(paused); });
    connect(menu_.get(), &QMenu::aboutToShow, this, [this, pause] { pause->setChecked(*model_.rulesPaused); });
    menu_->addSeparator();
    menu_->addAction(qtText(PanelView::settingsLabel), this, &Tray::settingsWanted);
    menu_->addAction(qtText(PanelView::quitLabel), this, &Tray::quitWanted);
}

void Tray::setWanted(bool wanted) {
    wanted_ = wanted;
    update();
    emit shownChanged();
}

void Tray::update() {
    // An icon works only in the place that it was made for.
    if (std::exchange(place_, trays_.place()) != place_) icon_.reset();
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
    const auto label = TrayLabel::of(*model_.memoryTight);
    icon_->setIcon(iconFor(*model_.memoryTight, look_));
    icon_->setToolTip(qtText(label.accessibleName));
}

QRect Tray::place() const { return icon_ ? icon_->geometry() : QRect(); }

QIcon Tray::iconFor(bool memoryTight, const Look& look) {
    QIcon icon;
    for (const int size : sizes) {
        icon.addPixmap(look.icons().pixmap(TrayLabel::of(memoryTight).symbol, look.tokens().borderStrong, size, 1));
    }
    // Trays that colour icons themselves use this one as a stencil.
    icon.setIsMask(true);
    return icon;
}

}  // namespace tolvane::desktop
