#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "base/Subscription.h"
#include "platform/Notifications.h"

namespace tolvane::desktop {

/// Requests of the desktop to the running program: open files, show a section, follow a clicked notification, or just
/// come forward. Main thread; must not outlive the model.
class OutsideRequests {
public:
    /// `bringForward` raises the main window and opens it if necessary; `isShown` returns whether it is open.
    struct Window {
        std::function<void()> bringForward;
        std::function<bool()> isShown;
    };

    OutsideRequests(AppModel& model, Notifications& notifications, Window window);

    /// Imports rule files and shows the result in the window if it is open, otherwise in a notification.
    void openFiles(const std::vector<std::string>& files);
    /// Shows the section of that name. Without a name, or with an unknown one, it only raises the window.
    void show(const std::optional<std::string>& section);

private:
    AppModel& model_;
    Window window_;
    Subscription clicks_;
};

}  // namespace tolvane::desktop
