#pragma once

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Logical cores that currently take work. Any thread.
int activeCores(const Runtime& runtime);

}  // namespace tolvane::machost
