#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace tolvane::machost {

enum class SourceKind { memoryPressure, timer, signal };

/// Memory pressure events, as a source's mask.
inline constexpr unsigned long pressureWarning = 2;
inline constexpr unsigned long pressureCritical = 4;

/// The system's event sources, one to one, so that a test can replace them. Handlers run on a background queue,
/// whatever event loop the program has. Callable from any thread.
struct DispatchCalls {
    using Handler = void (*)(void* context);

    /// Sleeps until it is resumed. Null when the system has no such source.
    std::function<void*(SourceKind kind, std::uintptr_t handle, unsigned long mask)> create;
    std::function<void(void* source, void* context)> setContext;
    std::function<void(void* source, Handler handler)> setEventHandler;
    /// Runs once, after the last event handler has ended.
    std::function<void(void* source, Handler handler)> setCancelHandler;
    /// Fires once, `delay` nanoseconds from now on the clock that includes the machine's sleep.
    std::function<void(void* source, std::int64_t delay, std::uint64_t leeway)> setTimer;
    std::function<void(void* source)> resume;
    std::function<void(void* source)> cancel;
    std::function<void(void* source)> release;

    /// A signal that a source watches must not end the program as well, so a handler that does nothing takes it. (An
    /// ignored signal would be ignored by every child, too.)
    std::function<void(int signal)> catchSignal;
    std::function<void(int signal)> restoreSignal;
};

using Dispatch = std::shared_ptr<const DispatchCalls>;

/// Runs a job on the main thread, after the jobs handed over before it. Callable from any thread.
using OnMain = std::function<void(std::function<void()> job)>;

}  // namespace tolvane::machost
