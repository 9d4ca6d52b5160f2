#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "base/Subscription.h"
#include "platform/Notifications.h"

namespace tolvane::desktop {

/// What the desktop asks of the running program: files to open, a section to show, a notification that was clicked, or
/// only to be seen. Main thread; ends before the model.
class OutsideRequests {
public:
    /// `bringForward` shows the main window before all others, opening it when need be; `isShown` says whether it
    /// stands open.
    struct Window {
        std::function<void()> bringForward;
        std::function<bool()> isShown;
    };

    OutsideRequests(AppModel& model, Notifications& notifications, Window window);

    /// Imports rule files. Shows the result in the window where that is open, else in a notification.
    void openFiles(const std::vector<std::string>& files);
    /// Shows the section of that name; without one, or with a name that is none, only the window comes forward.
    void show(const std::optional<std::string>& section);

private:
    AppModel& model_;
    Window window_;
    Subscription clicks_;
};

}  // namespace tolvane::desktop
