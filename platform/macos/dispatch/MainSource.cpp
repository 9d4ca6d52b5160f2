#include "platform/macos/dispatch/MainSource.h"

#include <utility>

namespace tolvane::machost {

namespace {

using Callback = std::function<void()>;

/// What the background thread may touch: a way to the main thread, and a weak reference to the callback there.
struct Context {
    OnMain onMain;
    std::weak_ptr<const Callback> callback;
};

void tell(void* pointer) {
    const auto& context = *static_cast<Context*>(pointer);
    context.onMain([weak = context.callback] {
        if (const auto callback = weak.lock()) (*callback)();
    });
}

void forget(void* pointer) { delete static_cast<Context*>(pointer); }

void* begin(const DispatchCalls& calls, const SourceRequest& request, Context context) {
    void* source = calls.create(request.kind, request.handle, request.mask);
    if (source == nullptr) return nullptr;
    // The source owns it from here on: its cancel handler touches it last.
    calls.setContext(source, new Context(std::move(context)));
    calls.setEventHandler(source, &tell);
    calls.setCancelHandler(source, &forget);
    if (request.kind == SourceKind::timer) calls.setTimer(source, request.delay, request.leeway);
    calls.resume(source);
    return source;
}

}  // namespace

Subscription onEvent(const Dispatch& dispatch, const OnMain& onMain, const SourceRequest& request,
                     std::function<void()> happened) {
    auto callback = std::make_shared<const Callback>(std::move(happened));
    void* source = begin(*dispatch, request, {.onMain = onMain, .callback = callback});
    if (source == nullptr) return {};
    return Subscription([dispatch, source, callback] {
        dispatch->cancel(source);
        dispatch->release(source);
    });
}

}  // namespace tolvane::machost
