#include "platform/macos/settings/MacPropertyLists.h"

#include <utility>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

/// Nil for anything that is not a property list.
Id propertyList(const Runtime& runtime, const std::string& path) {
    const Id bytes =
        runtime.send(runtime.classNamed("NSData"), "dataWithContentsOfFile:", Foundation::string(runtime, path));
    if (bytes == nullptr) return nullptr;
    void* none = nullptr;
    return runtime.send(runtime.classNamed("NSPropertyListSerialization"),
                        "propertyListWithData:options:format:error:", bytes, std::uint64_t{0}, none, none);
}

}  // namespace

MacPropertyLists::MacPropertyLists(ObjC runtime) : runtime_(std::move(runtime)) {}

std::optional<std::string> MacPropertyLists::text(const std::string& path, std::string_view key) {
    const Pool pool(*runtime_);
    const Id list = propertyList(*runtime_, path);
    if (!Foundation::isKindOf(*runtime_, list, "NSDictionary")) return std::nullopt;
    return Foundation::textIfString(*runtime_,
                                    runtime_->send(list, "objectForKey:", Foundation::string(*runtime_, key)));
}

}  // namespace tolvane::machost
