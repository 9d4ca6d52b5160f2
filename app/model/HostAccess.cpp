#include "app/model/AppModelPrivate.h"

namespace tolvane {

Host& AppModel::host() const { return d_->host; }

Date AppModel::now() const { return clock().now(); }

Clock& AppModel::clock() const { return *host().clock; }

Preferences& AppModel::preferences() const { return *host().preferences; }

Desktop& AppModel::desktop() const { return *host().desktop; }

LoginItem* AppModel::loginItem() const { return host().loginItem.get(); }

std::string AppModel::home() const { return host().folders->home(); }

const std::string& AppModel::locale() const { return host().locale; }

Pid AppModel::selfPID() const { return host().selfPID; }

std::uint32_t AppModel::uid() const { return host().uid; }

bool AppModel::knowsFrontmost() const { return host().frontmost->canTell(); }

bool AppModel::canNotify() const { return host().notifications != nullptr; }

PortLookup AppModel::portLookup() const { return {host(), d_->background.of(BackgroundJobs::Kind::portLookUps)}; }

}  // namespace tolvane
