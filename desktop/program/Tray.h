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

/// The program's icon in the tray, wherever the desktop has one: hosts may come late, go and come back. A click asks
/// for the panel; the menu of the other button has the same ways in words.
class Tray : public QObject {
    Q_OBJECT

public:
    /// `model` and `look` outlive the tray.
    Tray(AppModel& model, Trays& trays, const Look& look);
    ~Tray() override;

    /// The user's choice to have an icon at all.
    void setWanted(bool wanted);
    /// There is an icon that the user can see.
    bool isShown() const { return wanted_ && trays_.present(); }
    /// Where it is; invalid where the host does not report it.
    QRect place() const;
    QMenu& menu() const { return *menu_; }

    /// In a grey that stands out from light and dark panels alike: their colour is not the program's to know.
    static QIcon iconFor(bool memoryTight, const Look& look);

signals:
    void panelWanted(QRect icon);
    void openWanted();
    void settingsWanted();
    void quitWanted();
    /// An icon came or went.
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
    /// Made when the first host is there: how it speaks to hosts is settled then, once and for all.
    std::unique_ptr<QSystemTrayIcon> icon_;
    /// The place that the icon was made for.
    int place_ = 0;
    bool wanted_ = false;
    QPropertyNotifier tight_;
    Subscription news_;
};

}  // namespace tolvane::desktop
