#include "desktop/program/OutsideRequests.h"

#include "app/model/RuleFileArguments.h"

namespace tolvane::desktop {

OutsideRequests::OutsideRequests(AppModel& model, Notifications& notifications, Window window)
    : model_(model),
      window_(std::move(window)),
      clicks_(notifications.onClick([this](const std::optional<std::string>& section) { show(section); })) {}

void OutsideRequests::openFiles(const std::vector<std::string>& files) {
    RuleFileArguments::open(model_, files, [this] {
        if (!window_.isShown()) return false;
        window_.bringForward();
        return true;
    });
}

void OutsideRequests::show(const std::optional<std::string>& section) {
    const auto wanted = section ? appSectionFromRawValue(*section) : std::nullopt;
    if (wanted) model_.open(*wanted);
    window_.bringForward();
}

}  // namespace tolvane::desktop
