#include "platform/macos/makeMacHost.h"

#include <utility>

#include "platform/macos/darwin/DarwinDispatchCalls.h"
#include "platform/macos/darwin/DarwinKernelCalls.h"
#include "platform/macos/darwin/DarwinLogCalls.h"
#include "platform/macos/darwin/DarwinRuntimeCalls.h"

namespace tolvane::machost {

MacCalls appleCalls() {
    const auto runtime = appleRuntime();
    return {.kernel = processKernel(runtime), .runtime = runtime, .dispatch = appleDispatch(), .log = appleLog()};
}

Host makeMacHost(const PreferencesLayer& layer, const OnMain& onMain) { return hostOn(appleCalls(), layer, onMain); }

}  // namespace tolvane::machost
