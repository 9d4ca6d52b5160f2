#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "platform/macos/objc/RuntimeCalls.h"

namespace tolvane::machost {

/// Sends typed messages. Usable from any thread, like the objects it speaks to.
class Runtime {
public:
    explicit Runtime(RuntimeCalls calls) : calls_(std::move(calls)) {}

    const RuntimeCalls& calls() const { return calls_; }
    Id classNamed(const char* name) const { return calls_.findClass(name); }

    /// `Result` and the arguments are types of `Value`, or `void` for no result; nil is `Id{}`. A message to nil
    /// returns zero.
    template <typename Result = Id, typename... Arguments>
    Result send(Id receiver, const char* selector, Arguments... arguments) const {
        const Message message{.receiver = receiver,
                              .selector = selector,
                              .arguments = {Value(std::in_place_type<Arguments>, arguments)...}};
        [[maybe_unused]] const Value given = calls_.send(message, &perform<Result, Arguments...>);
        if constexpr (!std::is_void_v<Result>) {
            const auto* result = std::get_if<Result>(&given);
            return result ? *result : Result{};
        }
    }

private:
    template <typename Result, typename... Arguments>
    static Value perform(AnyFunction function, Selector selector, const Message& message) {
        return call<Result, Arguments...>(function, selector, message, std::index_sequence_for<Arguments...>());
    }

    template <typename Result, typename... Arguments, std::size_t... index>
    static Value call(AnyFunction function, Selector selector, const Message& message, std::index_sequence<index...>) {
        const auto typed = reinterpret_cast<Result (*)(Id, Selector, Arguments...)>(function);
        if constexpr (std::is_void_v<Result>) {
            typed(message.receiver, selector, std::get<Arguments>(message.arguments[index])...);
            return {};
        } else {
            return Value(std::in_place_type<Result>,
                         typed(message.receiver, selector, std::get<Arguments>(message.arguments[index])...));
        }
    }

    RuntimeCalls calls_;
};

using ObjC = std::shared_ptr<const Runtime>;

/// Unretained objects live until the pool ends. Every operation that sends messages opens one, since our own threads
/// have none.
class Pool {
public:
    explicit Pool(const Runtime& runtime) : runtime_(runtime), pool_(runtime.calls().pushPool()) {}
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool() { runtime_.calls().popPool(pool_); }

private:
    const Runtime& runtime_;
    void* pool_;
};

/// Keeps an object alive. The last owner releases it on whatever thread that owner ends.
class Owned {
public:
    Owned() = default;
    /// Takes over what the caller already owns, as from `alloc` and `init`.
    static Owned adopt(ObjC runtime, Id object) { return {std::move(runtime), object}; }
    /// Retains what belongs to another owner.
    static Owned retain(ObjC runtime, Id object) {
        if (object) runtime->calls().retain(object);
        return {std::move(runtime), object};
    }
    Owned(Owned&& other) noexcept
        : runtime_(std::move(other.runtime_)), object_(std::exchange(other.object_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(runtime_, other.runtime_);
        std::swap(object_, other.object_);
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (object_) runtime_->calls().release(object_);
    }

    Id get() const { return object_; }

private:
    Owned(ObjC runtime, Id object) : runtime_(std::move(runtime)), object_(object) {}

    ObjC runtime_;
    Id object_ = nullptr;
};

}  // namespace tolvane::machost
