#include "platform/linux/LinuxProcessControl.h"

namespace tolvane::linuxhost {

std::optional<Pid> LinuxProcessControl::start(const DetachedStart& /*program*/) { return std::nullopt; }

}  // namespace tolvane::linuxhost
