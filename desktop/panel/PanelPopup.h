#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <string>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/panel/PanelContents.h"
#include "desktop/parts/Redraw.h"

namespace tolvane::desktop {

/// The panel as a window beside the tray icon. Follows the model while it is open; Escape or a click elsewhere closes
/// it.
class PanelPopup : public QWidget {
    Q_OBJECT

public:
    /// `model` and `look` outlive the panel. `locale` is an ICU locale identifier.
    PanelPopup(AppModel& model, const Look& look, std::string locale);

    /// Opens beside the icon, or closes if it is open. `icon` is invalid if the host does not report its place.
    void toggle(QRect icon);
    void openAt(QRect icon);
    PanelContents& view() const { return *view_; }

signals:
    void settingsWanted();
    void quitWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void connectView();
    void connectModel();
    void draw();
    void place();

    AppModel& model_;
    const Look& look_;
    std::string locale_;
    PanelContents* view_;
    QRect icon_;
    QPoint pointer_;
    /// Time since the panel closed: a click on the icon closes the panel before the icon reports the click.
    QElapsedTimer closed_;
    Redraw redraw_{*this, [this] { draw(); }};
};

}  // namespace tolvane::desktop
