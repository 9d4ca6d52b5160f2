#pragma once

#include <QIcon>
#include <QObject>
#include <QPropertyNotifier>
#include <QRect>
#include <memory>

#include "app/model/AppModel.h"
#include "base/Subscription.h"
#include "desktop/look/Look.h"
#include "platform/Trays.h"

class QMenu;
class QSystemTrayIcon;

namespace tolvane::desktop {

/// The program's tray icon. Trays may come late, go and come back. A click asks for the panel; the context menu offers
/// the same commands.
class Tray : public QObject {
    Q_OBJECT

public:
    /// `model` and `look` outlive the tray.
    Tray(AppModel& model, Trays& trays, const Look& look);
    ~Tray() override;

    /// Whether the user wants an icon at all.
    void setWanted(bool wanted);
    /// Whether the user can see an icon.
    bool isShown() const { return wanted_ && trays_.present(); }
    /// The icon's rectangle; invalid if the host does not report it.
    QRect place() const;
    QMenu& menu() const { return *menu_; }

    /// In a grey that stands out on light and dark panels alike, since the program cannot know their colour.
    static QIcon iconFor(bool memoryTight, const Look& look);

signals:
    void panelWanted(QRect icon);
    void openWanted();
    void settingsWanted();
    void quitWanted();
    /// The icon appeared or disappeared.
    void shownChanged();

private:
    void buildMenu();
    void update();
    void makeIcon();
    void showState();

    AppModel& model_;
    const Look& look_;
    Trays& trays_;
    std::unique_ptr<QMenu> menu_;
    /// Created with the first tray: the toolkit chooses the protocol when the icon is made, and never changes it.
    std::unique_ptr<QSystemTrayIcon> icon_;
    /// The `Trays::place` that the icon was made for.
    int place_ = 0;
    bool wanted_ = false;
    QPropertyNotifier tight_;
    Subscription news_;
};

}  // namespace tolvane::desktop
