#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "base/Subscription.h"
#include "desktop/look/Look.h"
#include "desktop/window/MainWindow.h"
#include "desktop/window/Screen.h"
#include "desktop/window/WindowState.h"

namespace tolvane::desktop {

/// Renders every screen and every sheet into a folder, for pages that show the program and for machines without a
/// display: "processes.png" and so on by section, then "newrule.png", "newrule-agents.png", "settings.png",
/// "selection.png" and "menubar.png".
class Snapshots {
public:
    /// The preference that holds the folder; without it nothing is rendered.
    static constexpr std::string_view folderKey = "renderSnapshots";
    /// Preference to render the dark scheme as well, as "processes-dark.png".
    static constexpr std::string_view darkKey = "snapshotDark";

    /// Waits until a real machine has its first samples, renders, prints the folder and passes to `done` whether all
    /// pictures were written. All references outlive it.
    Snapshots(AppModel& model, Look& look, std::vector<Screen> screens, QString folder, bool dark,
              std::function<void(bool written)> done);

private:
    void render();
    bool renderScheme(bool dark);
    bool renderSections();
    bool renderSheets();
    bool renderSelection();
    bool write(QWidget& widget, const QString& name);

    AppModel& model_;
    Look& look_;
    std::vector<Screen> screens_;
    QString folder_;
    bool dark_;
    /// File-name suffix of the scheme that is being rendered.
    QString suffix_;
    std::function<void(bool)> done_;
    /// Empty, so that pictures show a window with default sizes whatever the user's own looks like.
    WindowState state_;
    /// Visible from the start, so that its values are as fresh as a user would get them.
    std::unique_ptr<MainWindow> window_;
    Subscription wait_;
};

}  // namespace tolvane::desktop
