#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/macos/objc/Runtime.h"

/// Blocks as the compiler lays them out, made and called without its help: Apple's ABI fixes the layout.
namespace tolvane::machost {

struct BlockDescriptor {
    unsigned long reserved = 0;
    unsigned long size = 0;
    void (*copy)(void* to, const void* from) = nullptr;
    void (*dispose)(const void* block) = nullptr;
    /// The call's type in the runtime's encoding.
    const char* signature = nullptr;
};

struct BlockHead {
    const void* isa = nullptr;
    std::int32_t flags = 0;
    std::int32_t reserved = 0;
    AnyFunction invoke = nullptr;
    const BlockDescriptor* descriptor = nullptr;
};
static_assert(sizeof(BlockHead) == 32 && sizeof(BlockDescriptor) == 40);

inline constexpr std::int32_t blockCopiesAndDisposes = 1 << 25;
inline constexpr std::int32_t blockHasSignature = 1 << 30;

/// The runtime's encoding of a type in a block's arguments.
template <typename Type>
struct TypeCode;
template <>
struct TypeCode<Id> {
    static constexpr char code = '@';
};
template <>
struct TypeCode<bool> {
    static constexpr char code = 'B';
};
template <>
struct TypeCode<std::uint64_t> {
    static constexpr char code = 'Q';
};

/// A block on the stack that calls a function. A receiver that keeps it copies it; every copy keeps the function alive.
template <typename... Arguments>
class Block {
public:
    using Function = std::function<void(Arguments...)>;

    Block(const Runtime& runtime, Function function)
        : literal_{{.isa = runtime.calls().stackBlockClass,
                    .flags = blockCopiesAndDisposes | blockHasSignature,
                    .invoke = reinterpret_cast<AnyFunction>(&invoke),
                    .descriptor = &descriptor},
                   new Shared(std::make_shared<const Function>(std::move(function)))} {}
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() { delete literal_.function; }

    Id get() { return reinterpret_cast<Id>(&literal_); }

private:
    using Shared = std::shared_ptr<const Function>;

    struct Literal {
        BlockHead head;
        Shared* function;
    };

    /// The runtime has already copied the bytes.
    static void copy(void* to, const void* from) {
        static_cast<Literal*>(to)->function = new Shared(*static_cast<const Literal*>(from)->function);
    }
    static void dispose(const void* block) { delete static_cast<const Literal*>(block)->function; }
    static void invoke(Id block, Arguments... arguments) {
        // The block may be destroyed while it runs.
        const Shared function = *reinterpret_cast<const Literal*>(block)->function;
        (*function)(arguments...);
    }

    static constexpr char signature[] = {'v', '@', '?', TypeCode<Arguments>::code..., '\0'};
    static constexpr BlockDescriptor descriptor{
        .size = sizeof(Literal), .copy = &copy, .dispose = &dispose, .signature = &signature[0]};

    Literal literal_;
};

/// Calls a block that the system handed us; nil is ignored.
template <typename... Arguments>
void callBlock(Id block, Arguments... arguments) {
    if (block == nullptr) return;
    const auto* head = reinterpret_cast<const BlockHead*>(block);
    reinterpret_cast<void (*)(Id, Arguments...)>(head->invoke)(block, arguments...);
}

}  // namespace tolvane::machost
