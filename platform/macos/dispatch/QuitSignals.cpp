#include "platform/macos/dispatch/QuitSignals.h"

#include <array>
#include <csignal>
#include <memory>
#include <vector>

#include "platform/macos/dispatch/MainSource.h"

namespace tolvane::machost {

namespace {

constexpr std::array<int, 3> quitSignals = {SIGTERM, SIGINT, SIGHUP};

}  // namespace

Subscription onQuitSignal(const Dispatch& dispatch, const OnMain& onMain, const std::function<void()>& asked) {
    auto sources = std::make_shared<std::vector<Subscription>>();
    for (const int signal : quitSignals) {
        dispatch->catchSignal(signal);
        sources->push_back(onEvent(dispatch, onMain,
                                   {.kind = SourceKind::signal, .handle = static_cast<std::uintptr_t>(signal)}, asked));
    }
    return Subscription([dispatch, sources] {
        sources->clear();
        for (const int signal : quitSignals) dispatch->restoreSignal(signal);
    });
}

}  // namespace tolvane::machost
