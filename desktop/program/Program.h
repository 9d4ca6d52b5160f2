#pragma once

#include <QApplication>
#include <memory>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "core/words/MachineZone.h"
#include "desktop/look/ColorScheme.h"
#include "desktop/look/Look.h"
#include "desktop/program/ExitAct.h"
#include "desktop/program/FileOpenEvents.h"
#include "desktop/program/FocusRing.h"
#include "desktop/program/OutsideRequests.h"
#include "desktop/program/Shell.h"
#include "desktop/program/Snapshots.h"
#include "desktop/program/WindowPresence.h"
#include "desktop/window/WindowState.h"
#include "platform/Host.h"
#include "platform/Windows.h"

namespace tolvane::desktop {

/// The purpose of a run. Rendering pictures and the demo run beside the real program without touching its files.
struct Purpose {
    bool demo = false;
    /// The folder to render into; empty if the run opens windows.
    QString pictures;

    bool draws() const { return !pictures.isEmpty(); }
    bool works() const { return !demo && !draws(); }
};

/// All objects of one run, destroyed in the reverse order of their creation.
class Program {
public:
    Program(QApplication& application, Host host, const Purpose& purpose);

    /// Renders every screen into the folder, then quits.
    void draw(const QString& folder);
    /// Opens the user interface, once. `isReachable` says whether a second start would bring the window back. After a
    /// start at login the window stays closed if there is a tray.
    Shell& show(bool isReachable, bool atLogin = false);
    /// Handles requests from the desktop from now on, and opens the files that the program was started with.
    OutsideRequests& answer(const std::vector<std::string>& files);

private:
    std::vector<Screen> screens();

    QApplication& application_;
    Host host_;
    std::unique_ptr<Windows> windows_;
    AppModel model_;
    ExitAct exitAct_;
    MachineZone zone_;
    QPropertyNotifier zoneLook_;
    ColorScheme scheme_;
    Look look_;
    WindowState state_;
    FocusRing ring_;
    std::unique_ptr<Snapshots> snapshots_;
    std::unique_ptr<WindowPresence> presence_;
    std::unique_ptr<Shell> shell_;
    std::unique_ptr<OutsideRequests> outside_;
    std::unique_ptr<FileOpenEvents> handedOver_;
};

}  // namespace tolvane::desktop
