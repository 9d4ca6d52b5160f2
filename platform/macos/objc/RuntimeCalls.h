#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

namespace tolvane::machost {

/// An Objective-C object or class; null is nil, which answers every message with nothing.
struct Object;
using Id = Object*;

/// A registered method name.
struct SelectorName;
using Selector = const SelectorName*;

/// A function whose type only its caller knows.
using AnyFunction = void (*)();

/// NSSize. Small enough that every processor returns it in registers, like any other result.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};
static_assert(sizeof(Size) == 16);

/// A message's argument or result: nothing, an object, BOOL, NSInteger, NSUInteger, double, a C string, a pointer, a
/// size, a four-character code.
using Value = std::variant<std::monostate, Id, bool, std::int64_t, std::uint64_t, double, const char*, void*, Size,
                           std::uint32_t>;

/// One message before it is sent.
struct Message {
    Id receiver = nullptr;
    const char* selector = nullptr;
    std::vector<Value> arguments;
};

/// Calls `function` with the receiver, the selector and the arguments in exactly the types that the sender named: the
/// one place where a message becomes a call.
using Perform = Value (*)(AnyFunction function, Selector selector, const Message& message);

/// The Objective-C runtime, so that a test can replace it and see every message. On a Mac `appleRuntime()` has the real
/// one. Callable from any thread.
struct RuntimeCalls {
    std::function<Value(const Message& message, Perform perform)> send;
    /// Nil when no loaded framework has the class.
    std::function<Id(const char* name)> findClass;
    std::function<void(Id)> retain;
    std::function<void(Id)> release;
    std::function<void*()> pushPool;
    std::function<void(void* pool)> popPool;
    /// The home folder as a string object.
    std::function<Id()> homeFolder;

    /// Classes made at run time, in this order. Nil when the name is taken.
    std::function<Id(Id superclass, const char* name)> allocateClass;
    std::function<bool(Id made, const char* selector, AnyFunction implementation, const char* types)> addMethod;
    std::function<void(Id made)> registerClass;
    std::function<void(Id made)> disposeClass;
    /// Makes a method from a block, which is copied.
    std::function<AnyFunction(Id block)> implementationOf;
    std::function<void(AnyFunction implementation)> removeImplementation;
    /// The class of blocks on the stack.
    const void* stackBlockClass = nullptr;
};

}  // namespace tolvane::machost
