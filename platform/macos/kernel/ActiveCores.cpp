#include "platform/macos/kernel/ActiveCores.h"

namespace tolvane::machost {

int activeCores(const Runtime& runtime) {
    const Pool pool(runtime);
    const Id process = runtime.send(runtime.classNamed("NSProcessInfo"), "processInfo");
    return static_cast<int>(runtime.send<std::uint64_t>(process, "activeProcessorCount"));
}

}  // namespace tolvane::machost
