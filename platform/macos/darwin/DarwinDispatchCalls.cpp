#include "platform/macos/darwin/DarwinDispatchCalls.h"

#include <dispatch/dispatch.h>

#include <csignal>

namespace tolvane::machost {

namespace {

dispatch_source_t native(void* source) { return static_cast<dispatch_source_t>(source); }

dispatch_source_type_t typeOf(SourceKind kind) {
    switch (kind) {
        case SourceKind::memoryPressure:
            return DISPATCH_SOURCE_TYPE_MEMORYPRESSURE;
        case SourceKind::signal:
            return DISPATCH_SOURCE_TYPE_SIGNAL;
        case SourceKind::timer:
            break;
    }
    return DISPATCH_SOURCE_TYPE_TIMER;
}

/// The queue lives as long as the table and every source that runs on it.
std::shared_ptr<dispatch_queue_s> makeQueue() {
    return {dispatch_queue_create("dev.tolvane.Tolvane.events", nullptr),
            [](dispatch_queue_t queue) { dispatch_release(queue); }};
}

void addSources(DispatchCalls& calls) {
    calls.create = [queue = makeQueue()](SourceKind kind, std::uintptr_t handle, unsigned long mask) -> void* {
        return dispatch_source_create(typeOf(kind), handle, mask, queue.get());
    };
    calls.setContext = [](void* source, void* context) { dispatch_set_context(native(source), context); };
    calls.setEventHandler = [](void* source, DispatchCalls::Handler handler) {
        dispatch_source_set_event_handler_f(native(source), handler);
    };
    calls.setCancelHandler = [](void* source, DispatchCalls::Handler handler) {
        dispatch_source_set_cancel_handler_f(native(source), handler);
    };
    calls.setTimer = [](void* source, std::int64_t delay, std::uint64_t leeway) {
        dispatch_source_set_timer(native(source), dispatch_walltime(nullptr, delay), DISPATCH_TIME_FOREVER, leeway);
    };
    calls.resume = [](void* source) { dispatch_resume(native(source)); };
    calls.cancel = [](void* source) { dispatch_source_cancel(native(source)); };
    calls.release = [](void* source) { dispatch_release(native(source)); };
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

Dispatch appleDispatch() {
    auto calls = std::make_shared<DispatchCalls>();
    addSources(*calls);
    calls->catchSignal = [](int signal) { handle(signal, [](int) {}); };
    calls->restoreSignal = [](int signal) { handle(signal, SIG_DFL); };
    return calls;
}

}  // namespace tolvane::machost
