#include "desktop/window/WindowMenu.h"

#include <QAction>
#include <QMenu>

#include "app/screens/panel/PanelView.h"
#include "app/screens/settings/SettingsView.h"
#include "app/screens/window/MainView.h"
#include "app/screens/window/Shortcuts.h"
#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/HoverEnd.h"

namespace tolvane::desktop {

WindowMenu::WindowMenu(AppModel& model, const Look& look, QWidget* window)
    : QObject(window),
      model_(model),
      window_(window),
      menu_(std::make_unique<QMenu>()),
      button_(new IconButton(look, "ellipsis", qtText(MainView::menu))) {
    addRuleCommands();
    menu_->addSeparator();
    connect(add(SettingsView::title, QKeySequence(Qt::CTRL | Qt::Key_Comma)), &QAction::triggered, this,
            &WindowMenu::settingsWanted);
    connect(add(Shortcuts::title, QKeySequence(Qt::Key_F1)), &QAction::triggered, this, &WindowMenu::shortcutsWanted);
    menu_->addSeparator();
    connect(add(PanelView::quitLabel, QKeySequence(Qt::CTRL | Qt::Key_Q)), &QAction::triggered, this,
            &WindowMenu::quitWanted);
    auto* key = new QAction(this);
    key->setShortcut(QKeySequence(Qt::Key_F10));
    window_->addAction(key);
    connect(key, &QAction::triggered, this, &WindowMenu::open);
    connect(button_, &QToolButton::clicked, this, &WindowMenu::open);
    connect(menu_.get(), &QMenu::aboutToHide, button_, [this] { endHover(*button_); }, Qt::QueuedConnection);
}

WindowMenu::~WindowMenu() = default;

/// The action is added to the window too, so that its shortcut works while the menu is closed.
QAction* WindowMenu::add(std::string_view text, const QKeySequence& keys) {
    auto* action = menu_->addAction(menuText(qtText(text)));
    action->setShortcut(keys);
    action->setShortcutVisibleInContextMenu(true);
    window_->addAction(action);
    return action;
}

void WindowMenu::addRuleCommands() {
    connect(add(MainView::importRules, QKeySequence::Open), &QAction::triggered, this, [this] { model_.askImport(); });
    auto* exporting = add(MainView::exportRules, QKeySequence::Save);
    connect(exporting, &QAction::triggered, this, [this] { model_.askExport(*model_.rules); });
    const auto enable = [this, exporting] { exporting->setEnabled(MainView::canExport(*model_.rules)); };
    enable();
    rules_ = model_.rules.onChange(enable);
}

void WindowMenu::open() {
    const auto size = menu_->sizeHint();
    const bool leftToRight = button_->layoutDirection() == Qt::LeftToRight;
    const QPoint corner = button_->mapToGlobal(QPoint(leftToRight ? 0 : button_->width() - size.width(), 0));
    menu_->popup(corner - QPoint(0, size.height() + Sizes::step));
}

}  // namespace tolvane::desktop
