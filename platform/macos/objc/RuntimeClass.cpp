#include "platform/macos/objc/RuntimeClass.h"

#include <utility>

namespace tolvane::machost {

RuntimeClass::RuntimeClass(ObjC runtime, const char* name, const std::vector<Method>& methods)
    : runtime_(std::move(runtime)), class_(runtime_->calls().allocateClass(runtime_->classNamed("NSObject"), name)) {
    if (class_ == nullptr) return;
    for (const Method& method : methods) {
        implementations_.push_back(runtime_->calls().implementationOf(method.block));
        runtime_->calls().addMethod(class_, method.selector, implementations_.back(), method.types);
    }
    runtime_->calls().registerClass(class_);
    object_ = Owned::adopt(runtime_, runtime_->send(class_, "new"));
}

RuntimeClass::~RuntimeClass() {
    if (class_ == nullptr) return;
    object_ = Owned();
    runtime_->calls().disposeClass(class_);
    for (const AnyFunction implementation : implementations_) runtime_->calls().removeImplementation(implementation);
}

}  // namespace tolvane::machost
