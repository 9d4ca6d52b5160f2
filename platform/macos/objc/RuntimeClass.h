#pragma once

#include <vector>

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// One object of a class made at run time, whose methods are blocks. It must outlive every use of that object: make
/// every receiver forget the object first.
class RuntimeClass {
public:
    struct Method {
        const char* selector = nullptr;
        /// Takes the object, then the method's arguments. Copied.
        Id block = nullptr;
        /// Result, receiver, selector and arguments in the runtime's encoding.
        const char* types = nullptr;
    };

    /// If the name is taken there is no object, and its methods are never called.
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
