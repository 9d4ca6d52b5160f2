#include "platform/macos/darwin/DarwinRuntimeCalls.h"

#include <objc/message.h>
#include <objc/runtime.h>

// Calls of the runtime and of Foundation that no header for C++ declares.
extern "C" {
// NOLINTBEGIN(readability-identifier-naming): their own names
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);
id objc_retain(id object);
void objc_release(id object);
id NSHomeDirectory(void);
extern void* _NSConcreteStackBlock[];
// NOLINTEND(readability-identifier-naming)
}

namespace tolvane::machost {

namespace {

id native(Id object) { return reinterpret_cast<id>(object); }
Id ours(id object) { return reinterpret_cast<Id>(object); }
Class classOf(Id object) { return reinterpret_cast<Class>(object); }
Id objectOf(Class made) { return reinterpret_cast<Id>(made); }

Value send(const Message& message, Perform perform) {
    const auto selector = reinterpret_cast<Selector>(sel_registerName(message.selector));
    return perform(reinterpret_cast<AnyFunction>(&objc_msgSend), selector, message);
}

void addObjects(RuntimeCalls& calls) {
    calls.send = &send;
    calls.findClass = [](const char* name) { return objectOf(objc_getClass(name)); };
    calls.retain = [](Id object) { objc_retain(native(object)); };
    calls.release = [](Id object) { objc_release(native(object)); };
    calls.pushPool = &objc_autoreleasePoolPush;
    calls.popPool = &objc_autoreleasePoolPop;
    calls.homeFolder = [] { return ours(NSHomeDirectory()); };
    calls.stackBlockClass = &_NSConcreteStackBlock[0];
}

void addClasses(RuntimeCalls& calls) {
    calls.allocateClass = [](Id superclass, const char* name) {
        return objectOf(objc_allocateClassPair(classOf(superclass), name, 0));
    };
    calls.addMethod = [](Id made, const char* selector, AnyFunction implementation, const char* types) {
        return static_cast<bool>(
            class_addMethod(classOf(made), sel_registerName(selector), reinterpret_cast<IMP>(implementation), types));
    };
    calls.registerClass = [](Id made) { objc_registerClassPair(classOf(made)); };
    calls.disposeClass = [](Id made) { objc_disposeClassPair(classOf(made)); };
    calls.implementationOf = [](Id block) {
        return reinterpret_cast<AnyFunction>(imp_implementationWithBlock(native(block)));
    };
    calls.removeImplementation = [](AnyFunction implementation) {
        imp_removeBlock(reinterpret_cast<IMP>(implementation));
    };
}

}  // namespace

ObjC appleRuntime() {
    RuntimeCalls calls;
    addObjects(calls);
    addClasses(calls);
    return std::make_shared<const Runtime>(std::move(calls));
}

}  // namespace tolvane::machost
