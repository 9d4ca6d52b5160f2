#pragma once

#include <vector>

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// One object of a class of its own, made at run time, whose methods are blocks. It outlives every use of its object:
/// whoever was given the object is told to forget it before.
class RuntimeClass {
public:
    struct Method {
        const char* selector = nullptr;
        /// Takes the object and then the method's arguments. Copied.
        Id block = nullptr;
        /// Result, receiver, selector, arguments, as the runtime writes types.
        const char* types = nullptr;
    };

    /// Where the name is taken there is no object, and its methods are never called.
    RuntimeClass(ObjC runtime, const char* name, const std::vector<Method>& methods);
    RuntimeClass(const RuntimeClass&) = delete;
    RuntimeClass& operator=(const RuntimeClass&) = delete;
    ~RuntimeClass();

    Id object() const { return object_.get(); }

private:
    ObjC runtime_;
    Id class_;
    std::vector<AnyFunction> implementations_;
    Owned object_;
};

}  // namespace tolvane::machost
