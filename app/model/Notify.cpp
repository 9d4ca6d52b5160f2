#include "app/model/AppModel.h"
#include "base/UUID.h"

namespace tolvane {

void AppModel::notify(const std::string& title, const std::string& body, std::optional<AppSection> opening) {
    host().notifications->post(
        {.identifier = UUID::random().text(),
         .title = title,
         .body = body,
         .section = opening ? std::optional<std::string>(traits(*opening).rawValue) : std::nullopt});
}

void AppModel::requestNotificationPermission() { host().notifications->requestPermission(); }

}  // namespace tolvane
