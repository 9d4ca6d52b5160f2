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

/// What a run is for. Pictures and the demo stand beside the program that works, and touch nothing of it.
struct Purpose {
    bool demo = false;
    /// The folder to draw into; empty for a run that works.
    QString pictures;

    bool draws() const { return !pictures.isEmpty(); }
    bool works() const { return !demo && !draws(); }
};

/// Everything of one run, in the order in which it is made and the reverse of which it ends.
class Program {
public:
    Program(QApplication& application, Host host, const Purpose& purpose);

    /// Draws every screen into the folder, and ends the application.
    void draw(const QString& folder);
    /// Opens what a user sees, once. `isReachable` says whether another start would bring the window back. A program
    /// that the login started keeps its window closed where there is a tray to live in.
    Shell& show(bool isReachable, bool atLogin = false);
    /// Listens to the desktop from now on, and opens the files that the program was started with.
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
