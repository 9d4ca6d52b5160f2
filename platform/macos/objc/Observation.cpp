#include "platform/macos/objc/Observation.h"

#include <memory>
#include <utility>

#include "platform/macos/objc/Block.h"
#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

Subscription observe(const ObjC& runtime, Id center, const char* name, std::function<void(Id notification)> posted) {
    Block<Id> block(*runtime, std::move(posted));
    const Id queue = runtime->send(runtime->classNamed("NSOperationQueue"), "mainQueue");
    const Id token =
        runtime->send(center, "addObserverForName:object:queue:usingBlock:", Foundation::string(*runtime, name), Id{},
                      queue, block.get());
    // A subscription must be copyable; the objects it holds are not.
    auto held =
        std::make_shared<std::pair<Owned, Owned>>(Owned::retain(runtime, center), Owned::retain(runtime, token));
    return Subscription([runtime, held] {
        const Pool pool(*runtime);
        runtime->send<void>(held->first.get(), "removeObserver:", held->second.get());
    });
}

}  // namespace tolvane::machost
