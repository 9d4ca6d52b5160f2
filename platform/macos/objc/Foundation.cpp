#include "platform/macos/objc/Foundation.h"

#include "base/UTF8.h"

namespace tolvane::machost::Foundation {

Id string(const Runtime& runtime, std::string_view text) {
    const auto valid = UTF8::repaired(text);
    return runtime.send(runtime.classNamed("NSString"), "stringWithUTF8String:", valid.c_str());
}

std::optional<std::string> text(const Runtime& runtime, Id string) {
    const char* bytes = runtime.send<const char*>(string, "UTF8String");
    if (bytes == nullptr) return std::nullopt;
    return std::string(bytes);
}

std::optional<std::string> textIfString(const Runtime& runtime, Id object) {
    if (!isKindOf(runtime, object, "NSString")) return std::nullopt;
    return text(runtime, object);
}

Id fileURL(const Runtime& runtime, std::string_view path) {
    return runtime.send(runtime.classNamed("NSURL"), "fileURLWithPath:", string(runtime, path));
}

std::optional<std::string> path(const Runtime& runtime, Id url) { return text(runtime, runtime.send(url, "path")); }

bool isKindOf(const Runtime& runtime, Id object, const char* className) {
    return object != nullptr && runtime.send<bool>(object, "isKindOfClass:", runtime.classNamed(className));
}

std::vector<Id> elements(const Runtime& runtime, Id array) {
    std::vector<Id> found;
    const auto count = runtime.send<std::uint64_t>(array, "count");
    for (std::uint64_t index = 0; index < count; ++index) {
        found.push_back(runtime.send(array, "objectAtIndex:", index));
    }
    return found;
}

std::string bytes(const Runtime& runtime, Id data) {
    const auto* first = static_cast<const char*>(runtime.send<void*>(data, "bytes"));
    const auto length = runtime.send<std::uint64_t>(data, "length");
    return first == nullptr ? std::string() : std::string(first, length);
}

std::optional<std::string> localizedDescription(const Runtime& runtime, Id error) {
    return text(runtime, runtime.send(error, "localizedDescription"));
}

}  // namespace tolvane::machost::Foundation
