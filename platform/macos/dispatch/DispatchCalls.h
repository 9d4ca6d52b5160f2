#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace tolvane::machost {

enum class SourceKind { memoryPressure, timer, signal };

/// Events of memory pressure, as the mask of a source.
inline constexpr unsigned long pressureWarning = 2;
inline constexpr unsigned long pressureCritical = 4;

/// The system's event sources, one to one, so that a test can stand in for them. Handlers run on a queue in the
/// background, whatever event loop the program has. Callable from any thread.
struct DispatchCalls {
    using Handler = void (*)(void* context);

    /// Sleeps until it is resumed. Null when the system has no such source.
    std::function<void*(SourceKind kind, std::uintptr_t handle, unsigned long mask)> create;
    std::function<void(void* source, void* context)> setContext;
    std::function<void(void* source, Handler handler)> setEventHandler;
    /// Runs once, after the last event handler has ended.
    std::function<void(void* source, Handler handler)> setCancelHandler;
    /// Once, nanoseconds from now on the clock that counts the machine's sleep.
    std::function<void(void* source, std::int64_t delay, std::uint64_t leeway)> setTimer;
    std::function<void(void* source)> resume;
    std::function<void(void* source)> cancel;
    std::function<void(void* source)> release;

    /// Signals that a source watches must not end the program as well: a handler that does nothing takes them. (One
    /// that is ignored would be ignored by every child, too.)
    std::function<void(int signal)> catchSignal;
    std::function<void(int signal)> restoreSignal;
};

using Dispatch = std::shared_ptr<const DispatchCalls>;

/// Runs a job on the main thread, after those that were handed over before. Callable from any thread.
using OnMain = std::function<void(std::function<void()> job)>;

}  // namespace tolvane::machost
