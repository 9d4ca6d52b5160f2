#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Observes the notifications of this name that any object posts to `center`, on the main thread. Within a `Pool`.
Subscription observe(const ObjC& runtime, Id center, const char* name, std::function<void(Id notification)> posted);

}  // namespace tolvane::machost
